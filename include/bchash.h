#pragma once
#include <iosfwd>
#include "bcsllist.h"
#include "bcfwd.h"
#include "norlib2api.h"

// Key-item pairs in a fixed number of buckets, each a chain of single-linked nodes: a key is
// found by hashing it to one bucket and walking only that chain. Iteration goes bucket by
// bucket, and in chain order within a bucket. The number of buckets (the list's length) is
// fixed at construction; a list with none refuses every insertion.
class NORLIB2_API BCHashList : public BCList {
  public:
    BCHashList(unsigned int buckets, unsigned int flags, unsigned int itemSize);
    ~BCHashList() override;

    // Returns 1 in every case.
    int Clear(int freeItems) override;
    // Unsorted: at the end of the key's chain; sorted (flag 0x0100): by key within the chain,
    // equal keys after those already there. The new node becomes current.
    int Insert(void* key, void* item) override;
    // The same as Insert: a hash list has no end to append at.
    int Append(void* key, void* item) override;
    // Moves the node of `oldKey`, or else of `key`, to its place for `key` (sorted or not).
    int Relocate(void* key, void* oldKey, void* unused) override;
    int Delete(void* key) override;
    // Leaves no current node.
    int DeleteCrnt() override;
    int Home() override;
    // End and Prev walk the buckets downwards and stop at bucket index 0xFFFF, which they
    // take for the position before the first bucket: with more buckets than that, the lower
    // ones are out of their reach.
    int End() override;
    int GoToIndex(unsigned int index) override;
    int GoToItem(void* key) override;
    int Prev() override;
    int Next() override;
    unsigned long GetCrntInd() override;
    // Keeps this list's buckets whatever length the record gives; items are placed by key.
    int LoadBase(std::istream& is) override;
    // The number of buckets cannot change: only the present one is accepted.
    int SetLen(unsigned int length) override;

    // String keys (flag 0x0200): the sum of their characters as signed bytes; block keys
    // (flag 0x1000): the same over their key-size bytes; other keys: the low 16 bits of the
    // key value. Each modulo the number of buckets.
    virtual unsigned long Hash(void* key);

    // Links a made node into the key's bucket, makes it current and returns what Install
    // says of it.
    int InsertNode(void* key, BCSingleLinkNode* node);
    // Unlinks the first node of the key's chain whose key compares equal, without freeing it;
    // null when none.
    BCSingleLinkNode* RemoveNode(void* key);

    unsigned long GetCrntBucket() const { return dwCrntAux; }
    BCSingleLinkNode* GetBucketHead(unsigned long bucket) const {
        return (lpBuckets && bucket < dwLength) ? lpBuckets[bucket] : nullptr;
    }

  protected:
    BCSingleLinkNode* Crnt() const { return static_cast<BCSingleLinkNode*>(lpCrnt); }

  private:
    // Hash kept within the buckets, whatever an override returns.
    unsigned long BucketOf(void* key);
    // The link (a bucket head or a node's next) that points at the first node of `bucket`'s
    // chain that `match` accepts; null when none.
    template <class Match> BCSingleLinkNode** LinkTo(unsigned long bucket, Match match);
    BCSingleLinkNode** LinkToKey(unsigned long bucket, void* key);
    BCSingleLinkNode** LinkToNode(const BCSingleLinkNode* node);
    // Takes the node a link points at out of its chain; it stops being current.
    void Unlink(BCSingleLinkNode** link);
    // First bucket from `from` upwards with a node; the bucket count when none.
    unsigned long FilledUpFrom(unsigned long from) const;
    // First bucket from `from` downwards whose head exists and is not `exclude`; the
    // sentinel when none.
    unsigned long FilledDownFrom(unsigned long from, const BCSingleLinkNode* exclude) const;
    void SetCrnt(unsigned long bucket, BCSingleLinkNode* node);

    BCSingleLinkNode** lpBuckets; // one chain head per bucket, owned; null without buckets
};

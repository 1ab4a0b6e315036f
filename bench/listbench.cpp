// Lists of the library against the standard containers doing the same work on the same
// items, measured side by side in one run. Prints the time of each and the ratio.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <list>
#include <sstream>
#include <unordered_map>
#include <vector>

#include <norlib2.h>

namespace {

using Clock = std::chrono::steady_clock;

template <class Work> double Millis(Work work) {
    auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void Row(const char* what, double ours, double theirs, const char* against) {
    std::printf("%-44s %9.2f ms  %-22s %9.2f ms  ratio %6.2f\n", what, ours, against, theirs,
                theirs > 0 ? ours / theirs : 0.0);
}

void* Key(long value) {
    return reinterpret_cast<void*>(static_cast<intptr_t>(value));
}

volatile long g_sink; // keeps results alive

void ArrayList(int n, int finds) {
    BCArrayList list(0, sizeof(int), 0, sizeof(int), 4096, 0);
    std::vector<int> vec;
    Row("array list: append", Millis([&] {
            for (int i = 0; i < n; ++i)
                list.Append(Key(i), &i);
        }),
        Millis([&] {
            for (int i = 0; i < n; ++i)
                vec.push_back(i);
        }),
        "vector push_back");
    // A find lands on the first key above the one asked for.
    Row("array list: find (per 1,000)", Millis([&] {
            for (int i = 0; i < finds; ++i) {
                void* item = list.Find(Key((i * 7919) % n));
                g_sink = item ? *static_cast<int*>(item) : 0;
                delete[] static_cast<unsigned char*>(item);
            }
        }),
        Millis([&] {
            for (int i = 0; i < finds; ++i) {
                int key = (i * 7919) % n;
                g_sink = *std::find_if(vec.begin(), vec.end() - 1, [&](int v) { return v > key; });
            }
        }),
        "vector find_if");
    Row("array list: delete from the front", Millis([&] {
            list.Home();
            while (list.DeleteCrnt())
                ;
        }),
        Millis([&] {
            while (!vec.empty())
                vec.erase(vec.begin());
        }),
        "vector erase(begin)");
}

// Saving reads the items straight from the list's block: it should cost about what a raw
// write of each item does.
void ArraySave(int n) {
    BCArrayList list(0, sizeof(int), 0, sizeof(int), 4096, 0);
    std::vector<int> vec;
    for (int i = 0; i < n; ++i) {
        list.Append(Key(i), &i);
        vec.push_back(i);
    }
    std::ostringstream ours(std::ios::binary), raw(std::ios::binary);
    Row("array list: save", Millis([&] { list.Save(ours); }), Millis([&] {
            for (int& v : vec)
                raw.write(reinterpret_cast<const char*>(&v), sizeof v);
        }),
        "raw per-item write");
    g_sink = static_cast<long>(ours.str().size() + raw.str().size());
}

template <class List>
void LinkedList(const char* name, List& list, std::vector<int>& items, int finds) {
    std::list<int*> std;
    char label[64];
    std::snprintf(label, sizeof label, "%s: append", name);
    Row(label, Millis([&] {
            for (int& item : items)
                list.Append(Key(item), &item);
        }),
        Millis([&] {
            for (int& item : items)
                std.push_back(&item);
        }),
        "list push_back");
    std::snprintf(label, sizeof label, "%s: find (per 1,000)", name);
    Row(label, Millis([&] {
            for (int i = 0; i < finds; ++i)
                g_sink = *static_cast<int*>(list.Find(Key((i * 7919) % items.size())));
        }),
        Millis([&] {
            for (int i = 0; i < finds; ++i) {
                long key = (i * 7919) % items.size();
                g_sink = **std::find_if(std.begin(), std.end(), [&](int* p) { return *p == key; });
            }
        }),
        "list find_if");
    std::snprintf(label, sizeof label, "%s: delete all", name);
    Row(label, Millis([&] {
            list.Home();
            while (list.DeleteCrnt())
                ;
        }),
        Millis([&] { std.clear(); }), "list clear");
}

void HashList(std::vector<int>& items) {
    BCHashList list(65521, 0, 0);
    std::unordered_map<long, int*> map;
    Row("hash list: insert", Millis([&] {
            for (int& item : items)
                list.Insert(Key(item), &item);
        }),
        Millis([&] {
            for (int& item : items)
                map.emplace(item, &item);
        }),
        "unordered_map emplace");
    Row("hash list: find all", Millis([&] {
            for (int& item : items)
                g_sink = *static_cast<int*>(list.Find(Key(item)));
        }),
        Millis([&] {
            for (int& item : items)
                g_sink = *map.find(item)->second;
        }),
        "unordered_map find");
    Row("hash list: delete all by key", Millis([&] {
            for (int& item : items)
                list.Delete(Key(item));
        }),
        Millis([&] {
            for (int& item : items)
                map.erase(item);
        }),
        "unordered_map erase");
}

void StackAndQueue(std::vector<int>& items) {
    BCStackList stack;
    std::vector<int*> vec;
    Row("stack list: push and pop", Millis([&] {
            for (int& item : items)
                stack.Push(Key(item), &item);
            for (size_t i = 0; i < items.size(); ++i)
                g_sink = *static_cast<int*>(stack.Pop());
        }),
        Millis([&] {
            for (int& item : items)
                vec.push_back(&item);
            while (!vec.empty()) {
                g_sink = *vec.back();
                vec.pop_back();
            }
        }),
        "vector push/pop_back");
    BCQueueList queue;
    std::list<int*> std;
    Row("queue list: in and out", Millis([&] {
            for (int& item : items)
                queue.In(Key(item), &item);
            for (size_t i = 0; i < items.size(); ++i)
                g_sink = *static_cast<int*>(queue.Out());
        }),
        Millis([&] {
            for (int& item : items)
                std.push_back(&item);
            while (!std.empty()) {
                g_sink = *std.front();
                std.pop_front();
            }
        }),
        "list push_back/pop_front");
}

} // namespace

int main() {
    const int n = 100000;
    std::vector<int> items(n);
    for (int i = 0; i < n; ++i)
        items[i] = i;
    std::printf("%d items; finds in linear lists are 1,000 lookups\n\n", n);
    ArrayList(n, 1000);
    ArraySave(2 * n);
    BCDoubleLinkedList dlist(0, 0);
    LinkedList("double-linked list", dlist, items, 1000);
    BCSingleLinkedList slist(0, 0);
    LinkedList("single-linked list", slist, items, 1000);
    HashList(items);
    // Popping finds its node by key from the head, as the stack's contract says: quadratic,
    // so the stack and queue run on 10,000 items.
    std::vector<int> fewer(items.begin(), items.begin() + 10000);
    StackAndQueue(fewer);
    return 0;
}

#pragma once
#include <deque>
#include <string>
#include <vector>

#include "norlib1.h"

// A message sink that records every message and answers boxes with scripted buttons
// (IDOK when the script is empty). Installs itself for its lifetime.
class MsgRecorder {
  public:
    struct Entry {
        BCMsgKind kind;
        unsigned int id, style, line;
        std::string text, caption, file;
        const BCObject* object;
    };

    MsgRecorder();
    ~MsgRecorder();
    MsgRecorder(const MsgRecorder&) = delete;
    MsgRecorder& operator=(const MsgRecorder&) = delete;

    void Answer(int button) { m_answers.push_back(button); }
    const std::vector<Entry>& Entries() const { return m_entries; }
    size_t Count() const { return m_entries.size(); }
    const Entry& Last() const { return m_entries.back(); }
    void Clear() { m_entries.clear(); }
    // Ids of the numbered messages received, in order.
    std::vector<unsigned int> NumberedIds() const;
    // Texts of every message received, in order, each followed by "|".
    std::string Texts() const;
    // The faults received, each as "FILE:line text|".
    std::string Faults() const;

  private:
    static int Sink(const BCMsgInfo& info, void* context);
    std::vector<Entry> m_entries;
    std::deque<int> m_answers;
    BCMsgSink m_previous;
    void* m_previousContext;
};

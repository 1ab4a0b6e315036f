#include "msgrecorder.h"

#include "bclib2.h"

MsgRecorder::MsgRecorder() : m_previous(nullptr), m_previousContext(nullptr) {
    // Numbered messages need the library's string table: make sure the library is loaded.
    BCGetDLLModule2();
    m_previous = BCSetMsgSink(&MsgRecorder::Sink, this, &m_previousContext);
}

MsgRecorder::~MsgRecorder() {
    BCSetMsgSink(m_previous == BCDefaultMsgSink ? nullptr : m_previous, m_previousContext);
}

std::vector<unsigned int> MsgRecorder::NumberedIds() const {
    std::vector<unsigned int> ids;
    for (const Entry& e : m_entries)
        if (e.kind == BC_MSG_NUMBERED)
            ids.push_back(e.id);
    return ids;
}

std::string MsgRecorder::Texts() const {
    std::string texts;
    for (const Entry& e : m_entries)
        texts += e.text + "|";
    return texts;
}

std::string MsgRecorder::Faults() const {
    std::string all;
    for (const Entry& e : m_entries)
        if (e.kind == BC_MSG_FAULT)
            all += e.file + ":" + std::to_string(e.line) + " " + e.text + "|";
    return all;
}

int MsgRecorder::Sink(const BCMsgInfo& info, void* context) {
    MsgRecorder* self = static_cast<MsgRecorder*>(context);
    self->m_entries.push_back({info.kind, info.id, info.style, info.line,
                               info.text ? info.text : "", info.caption ? info.caption : "",
                               info.file ? info.file : "", info.object});
    if (self->m_answers.empty())
        return 1;
    int answer = self->m_answers.front();
    self->m_answers.pop_front();
    return answer;
}

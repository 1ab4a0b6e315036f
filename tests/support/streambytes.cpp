#include "streambytes.h"

#include <windows.h>

#include <cstdio>
#include <fstream>

#include "norlib1.h"

namespace {

LONG WINAPI EndOnCrash(EXCEPTION_POINTERS* info) {
    std::fprintf(stderr, "crash: exception %08lx\n",
                 static_cast<unsigned long>(info->ExceptionRecord->ExceptionCode));
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

int AnswerAtOnce(const BCMsgInfo& info, void*) {
    std::fprintf(stderr, "message %u: %s\n", info.id, info.text ? info.text : "");
    return IDOK;
}

} // namespace

bool NeverWaitOnFaults() {
    SetUnhandledExceptionFilter(EndOnCrash);
    BCSetMsgSink(AnswerAtOnce, nullptr);
    return true;
}

std::string RecordOf(BCObject& object) {
    std::ostringstream os = OutStream();
    const int saved = object.Save(os);
    EXPECT_TRUE(saved);
    return saved ? os.str() : std::string();
}

std::string TempFile(const char* prefix, const std::string& bytes) {
    char dir[MAX_PATH], path[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    GetTempFileNameA(dir, prefix, 0, path);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    return path;
}

#include "streambytes.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>

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

std::vector<std::string> Mutants(const std::string& record, unsigned count, unsigned seed) {
    static const std::uint32_t absurd[] = {0xFFFFFFFFu, 0x7FFFFFFFu, 0x80000000u, 0x00FFFFFFu,
                                           0x10000u};
    std::mt19937 random(seed);
    std::vector<std::string> mutants;
    for (unsigned n = 0; n < count && !record.empty(); ++n) {
        std::string bytes = record;
        for (unsigned places = 1 + random() % 3; places; --places) {
            size_t at = random() % bytes.size();
            if (random() % 2) {
                bytes[at] = static_cast<char>(random());
                continue;
            }
            const size_t width = std::min<size_t>(4, bytes.size() - at);
            bytes.replace(at, width, LE32(absurd[random() % 5]), 0, width);
        }
        if (random() % 4 == 0)
            bytes.resize(random() % bytes.size());
        mutants.push_back(bytes);
    }
    return mutants;
}

std::string TempFile(const char* prefix, const std::string& bytes) {
    char dir[MAX_PATH], path[MAX_PATH];
    GetTempPathA(MAX_PATH, dir);
    GetTempFileNameA(dir, prefix, 0, path);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    return path;
}

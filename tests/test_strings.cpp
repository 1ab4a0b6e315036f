#include <gtest/gtest.h>

#include <windows.h>

#include <string>

#include "norlib2.h"
#include "streambytes.h"

namespace {

TEST(KoStringTest, LoadsResourcesFromTheLibraryFormatsAndCopies) {
    KoErrorHook::ResetProcError();
    KoString text, again, message;
    // The second is found through the registered library module without naming it.
    ASSERT_TRUE(text.getResource(10072) == 1 && again.getResource(3086, nullptr));
    EXPECT_EQ(38, message.Sprintf(10086, BCGetDLLModule2()->GetResources(), "a.txt"));
    EXPECT_EQ("File already exists:  %s|BCArrayList|File a.txt already exists.  Overwrite?",
              std::string(text.c_str()) + "|" + again.c_str() + "|" + message.c_str());
    EXPECT_FALSE(KoErrorHook::DidProcErrorOccur());

    ASSERT_TRUE(text.getResource(10082)); // several lines, longer than a short buffer
    EXPECT_EQ(std::string("An edit control can only handle\n text up to 32767 characters in "
                          "length.\n (Attempted to edit %ld characters.)"),
              text.c_str());
    std::string big(5000, 'x');
    EXPECT_TRUE(message.Sprintf("<%s>", big.c_str()) == 5002 && message.Length() == 5002u);
    // Copies are independent.
    KoString a("first"), b(a), c;
    a.Sprintf("%d", 2);
    c = a;
    c = c;
    EXPECT_EQ("first2", std::string(b.c_str()) + c.c_str());
}

TEST(KoErrorHookTest, FailuresRaiseTheFlagUntilResetAndEmptyTextsAreNone) {
    KoErrorHook::ResetProcError();
    KoString text("kept");
    EXPECT_TRUE(!text.getResource(9999) && KoErrorHook::DidProcErrorOccur() &&
                KoErrorHook::GetProcError() == KO_ERR_NO_RESOURCE && !*text.c_str());
    // The first code raised is the one kept.
    KoErrorHook::RaiseProcError(KO_ERR_FORMAT);
    EXPECT_EQ(KO_ERR_NO_RESOURCE, KoErrorHook::GetProcError());
    KoErrorHook::ResetProcError();
    EXPECT_TRUE(!KoErrorHook::DidProcErrorOccur() &&
                !text.Sprintf(static_cast<const char*>(nullptr)) &&
                KoErrorHook::GetProcError() == KO_ERR_FORMAT);

    KoErrorHook::ResetProcError();
    text.Sprintf("kept");
    EXPECT_TRUE(!text.Sprintf("%s", "") && !*text.c_str() &&
                !KoErrorHook::DidProcErrorOccur()); // an empty result is no failure
    KoErrorHook::ResetProcError();
}

TEST(KoStringTest, LoadResStringCutsToTheBufferAndLongResourcesComeWhole) {
    // 9001 is 1500 characters of the test program's own table: more than one buffer's worth.
    // No buffer, or one of no bytes, is left as it is.
    char buffer[8], none[8], cut[600], untouched[2] = "x";
    EXPECT_EQ((Seq{7, 0, 599, 0, 0}),
              (Seq{KoString::LoadResString(3086, nullptr, buffer, sizeof buffer),
                   KoString::LoadResString(9999, nullptr, none, sizeof none),
                   KoString::LoadResString(9001, nullptr, cut, sizeof cut),
                   KoString::LoadResString(9001, nullptr, untouched, 0),
                   KoString::LoadResString(9001, nullptr, nullptr, sizeof cut)}));
    EXPECT_EQ("BCArray||x", std::string(buffer) + "|" + none + "|" + untouched);
    KoString text;
    ASSERT_TRUE(text.getResource(9001));
    EXPECT_TRUE(text.Length() == 1500u && text.c_str()[0] == '<' && text.c_str()[1499] == '>');
}

// Answers for the one module whose table holds `id` (passed as the context).
int HoldsString(void* module, void* context) {
    char text[8];
    return LoadStringA(static_cast<HINSTANCE>(module),
                       static_cast<UINT>(reinterpret_cast<UINT_PTR>(context)), text,
                       sizeof text) > 0;
}

TEST(KoStringTest, FindModuleNamesTheFirstModuleThatAnswers) {
    void* library = GetModuleHandleA("norlib2.dll");
    auto find = [](void* from, UINT_PTR id) {
        return KoString::FindModule(from, HoldsString, reinterpret_cast<void*>(id));
    };
    // Both hold 3001: the search stops at the first, from where it starts.
    EXPECT_EQ((std::vector<void*>{library, GetModuleHandleA(nullptr), nullptr,
                                  GetModuleHandleA(nullptr), library}),
              (std::vector<void*>{find(nullptr, 3086), find(library, 9001), find(nullptr, 9999),
                                  find(nullptr, 3001), find(library, 3001)}));
}

TEST(KoStringTest, RemovedModulesAreNoLongerSearched) {
    HMODULE user = GetModuleHandleA("user32.dll");
    char text[64];
    unsigned int id = 1; // the first of its strings that neither this program nor the library holds
    while (id < 4096 && (LoadStringA(user, id, text, sizeof text) <= 0 ||
                         KoString::LoadResString(id, nullptr, text, sizeof text) > 0))
        ++id;
    KoString::AddResourceModule(user);
    const int added = KoString::LoadResString(id, nullptr, text, sizeof text);
    KoString::RemoveResourceModule(user);
    EXPECT_TRUE(id < 4096u && added > 0 &&
                !KoString::LoadResString(id, nullptr, text, sizeof text));
}

} // namespace

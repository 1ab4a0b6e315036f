#include <cstring>
#include <memory>

#include "guidriver.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

using Strings = std::vector<std::string>;

BCComboBox* Combo(Frame& frame, long style, const char* text = nullptr) {
    return new BCComboBox(7, &frame.main, BCPosition(0, 0), BCSize(200, 150), style, text, &App(),
                          1);
}

template <class Box> Strings Entries(Box& box) {
    Strings all;
    for (int i = 0; i < box.GetCount(); ++i) {
        all.emplace_back(box.GetItemLen(i), '\0');
        box.GetItem(i, &all.back()[0]);
    }
    return all;
}

char* Text(const char* s) {
    return const_cast<char*>(s);
}

TEST(ComboBoxTest, EntriesEditFieldAndFind) {
    using s = std::string;
    Frame frame;
    std::unique_ptr<BCComboBox> box(Combo(frame, CBS_DROPDOWN, "typed text"));
    char text[200] = "";
    EXPECT_TRUE(box->GetObjectType() == 42u && (box->GetStyle() & 0x50A00003) == 0x50A00002 &&
                box->GetText(text, 6) == 5 && text == s("typed")); // cut to the buffer
    MsgRecorder recorder;
    EXPECT_TRUE(box->Delete(-1) == 0 && box->Insert(Text("x"), 5) == 0); // empty box
    for (const char* s : {"beta", "alpha", "gamma", "omega"})
        box->Append(Text(s));
    EXPECT_EQ((std::vector<unsigned int>{10071}), recorder.NumberedIds()); // adding is quiet
    EXPECT_TRUE(box->Insert(Text("delta"), 1) && box->Delete(-1) && box->Delete(0));
    EXPECT_EQ((Strings{"delta", "alpha", "gamma"}), Entries(*box));
    EXPECT_FALSE(box->GetCrntInd() != -1 || box->GetCrntItem(text) || box->GoTo(5));
    EXPECT_TRUE(box->GoTo(1) && box->GetCrntItem(text) && s("alpha") == text);
    void* value = box->GetCrntItem(); // a text entry read as a value gives its first bytes
    EXPECT_EQ(0, std::memcmp(&value, "alpha\0\0\0", sizeof value));
    EXPECT_EQ((Seq{0, 1, 0, 0, -1}), (Seq{box->Find(Text("del"), -1, 0, 0), box->GetCrntInd(),
                                          box->Find(Text("del"), -1, 1, 0), box->GetCrntInd(),
                                          box->Find(Text("zeta"), -1, 0, 0)}));
    // Data words: the search starts after `start`, wraps once and sees `start` itself last.
    int data[] = {7, 9};
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(box->SetItemData(i, &data[i % 2]));
    EXPECT_EQ((Seq{0, 2, 0, 2, 1, 2, -1}),
              (Seq{box->Find(&data[0], -1, 0, 1), box->Find(&data[0], 0, 0, 1),
                   box->Find(&data[0], 2, 0, 1), box->Find(&data[0], 1, 0, 1),
                   box->Find(&data[0], 1, 1, 1), box->GetCrntInd(), box->Find(text, 0, 0, 1)}));
    EXPECT_TRUE(box->GetItemData(1) == &data[1] && box->GetItemData(9) == nullptr &&
                box->SetItemData(9, data) == 0);
    // The selection of the edit field, cut to the buffer and to 131 characters.
    box->SetText("typed text");
    box->SetCrntSelection(BCLimits(2, 8));
    EXPECT_TRUE(box->GetCrntSelection() == BCLimits(2, 8) && box->GetTextLen() == 10);
    EXPECT_TRUE(box->GetSelectedText(text, 6) == 6 && s("ped te") == text);
    EXPECT_TRUE(box->GetSelectedText(text, 4) == 3 && s("ped") == text);
    EXPECT_TRUE(box->SetCharLimit(300) && box->SetText(std::string(150, 'x').c_str()));
    box->SetCrntSelection(BCLimits(0, 150));
    EXPECT_EQ(131u, box->GetSelectedText(text, sizeof text));
    EXPECT_TRUE(box->SetText("") && box->GetSelectedText(text, sizeof text) == 0);
    EXPECT_TRUE(box->Delete(-1) && box->Delete(-1) && box->Delete(-1) && box->GetCount() == 0);
}

// Every list kind fills a box and takes its entries back through the list protocol.
TEST(ComboBoxTest, LoadAndSaveWorkWithEveryListKind) {
    Frame frame;
    std::unique_ptr<BCComboBox> source(Combo(frame, CBS_DROPDOWN)), sorted(Combo(frame, CBS_SORT));
    for (const char* s : {"pear", "fig tree", "apple"})
        source->Append(Text(s));
    BCFormat& text = BCGetTextFormat();
    std::unique_ptr<BCList> lists[] = {
        std::make_unique<BCArrayList>(4, 16, 0, 0, 4, 0),
        std::make_unique<BCDoubleLinkedList>(0, 16), std::make_unique<BCHashList>(7, 0, 16),
        std::make_unique<BCStackList>(), std::make_unique<BCQueueList>()};
    for (auto& list : lists) {
        list->SetItemSize(16);
        ASSERT_EQ(1, source->SaveToList(list.get(), text, 0));
        sorted->DeleteAll();
        ASSERT_EQ(1, sorted->LoadFromList(list.get(), text, 0, 1));
        EXPECT_EQ((Strings{"apple", "fig tree", "pear"}), Entries(*sorted));
        for (int i = 0; i < 3; ++i) // each entry holds its item
            EXPECT_EQ(Entries(*sorted)[i], static_cast<char*>(sorted->GetItemData(i)));
    }
    BCDoubleLinkedList pointers(0x0800, 16), empty(0, 16);
    struct Refusing : BCDoubleLinkedList {
        Refusing() : BCDoubleLinkedList(0x0800, 16) {}
        int Append(void*, void*) override { return 0; }
    } full;
    EXPECT_EQ(0, sorted->SaveToList(&full, text, 1));
    ASSERT_TRUE(sorted->SaveToList(&pointers, text, 1) && pointers.GetCount() == 3u);
    pointers.Home();
    EXPECT_EQ(sorted->GetItemData(0), pointers.GetCrntItem());
    sorted->Append(Text(std::string(300, 'x').c_str()));
    BCArrayList longs(4, 16, 0, 0, 4, 0);
    EXPECT_EQ(0, sorted->SaveToList(&longs, text, 0)); // an entry too long for a list item
    EXPECT_EQ(1, sorted->LoadFromList(&empty, text, 0, 0));
    EXPECT_EQ(0, sorted->LoadFromList(&empty, BCGetBitmapFormat(), 0, 0) +
                     sorted->SaveToList(&empty, BCGetBitmapFormat(), 0));
}

TEST(ComboBoxTest, EveryOperationWithoutAWindowGivesItsNoWindowResult) {
    BCComboBox box(BCResID(1u), nullptr, &App());
    BCArrayList list(4, 16, 0, 0, 4, 0);
    char buffer[8] = "keep";
    MsgRecorder recorder;
    EXPECT_EQ(7u, box.GetText(buffer, 7));
    EXPECT_EQ(-6, box.Append(buffer) + box.GetCount() + box.GetCrntInd() + box.GetItemLen(0) +
                      box.Find(buffer, 0, 0, 0) + box.Find(buffer, 0, 0, 1));
    EXPECT_EQ(0, box.Insert(buffer, 0) + box.Delete(0) + box.DeleteAll() + box.GoTo(0) +
                     box.GetCrntItem(buffer) + box.SetText("x") + box.GetTextLen() +
                     box.SetCharLimit(4) + box.GetSelectedText(buffer, 8) + box.GetItem(0, buffer) +
                     box.SetItemData(0, buffer) + box.LoadFromList(&list, BCGetTextFormat(), 0, 0) +
                     box.SaveToList(&list, BCGetTextFormat(), 0));
    EXPECT_TRUE(box.GetCrntItem() == nullptr && box.GetItemData(0) == nullptr &&
                box.GetCrntSelection() == BCLimits(0, 0) && recorder.Count() == 0);
    EXPECT_STREQ("keep", buffer);
}

} // namespace

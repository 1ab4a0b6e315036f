#include <cstring>
#include <memory>
#include <tuple>

#include "guidriver.h"
#include "msgrecorder.h"
#include "streambytes.h"

namespace {

using Ids = std::vector<unsigned int>;
using Strings = std::vector<std::string>;

std::unique_ptr<BCMultiStringEdit> Lines(Frame& frame, const char* text, short height = 120) {
    return std::make_unique<BCMultiStringEdit>(31, &frame.main, BCPosition(0, 0),
                                               BCSize(300, height), text, &App());
}

template <class Field> std::string TextOf(Field& field) {
    char text[128] = "";
    field.GetText(text, sizeof text);
    return text;
}

using WatchedText = Watched<BCTextData>;

TEST(EditControlTest, SelectionModifiedFlagUndoClipboardPasswordAndDumps) {
    Frame frame;
    BCStringEdit edit(30, &frame.main, BCPosition(0, 0), BCSize(200, 20), "abcdef", &App());
    auto at = [&edit](long start, long end) -> BCStringEdit& {
        return edit.SetCrntSelection(BCLimits(start, end)), edit;
    };
    at(1, 3).SetModified(0);
    EXPECT_EQ((Seq{1, 0, 1, 1}), // the old flag each time
              (Seq{edit.GetCrntSelection() == BCLimits(1, 3), edit.SetModified(1),
                   edit.SetModified(1), edit.SetModified(0)}));
    edit.Copy();
    at(6, 6).Paste();
    at(0, 2).Cut();
    EXPECT_EQ("cdefbc", TextOf(edit));
    EXPECT_TRUE(edit.CanUndo() == 1 && edit.Undo() == 1 && TextOf(edit) == "abcdefbc");
    at(2, 4).DeleteSelectedText();
    EXPECT_TRUE(TextOf(edit) == "abefbc" && edit.IsModified() == 1);
    edit.SetCharLimit(7);
    edit.ReplaceSelectedText("xyz");
    EXPECT_TRUE(edit.SetPasswordChar('*') == 1 && TextOf(edit) == "abxefbc" &&
                SendMessageA(edit.GetHandle(), EM_GETPASSWORDCHAR, 0, 0) == '*');

    // The selected text is cut to the buffer's size; the dumps show 15 characters.
    BCStringEdit line(30, &frame.main, BCPosition(0, 0), BCSize(200, 20), "abcdefgh", &App());
    auto lines = Lines(frame, "abcdefgh");
    for (unsigned int size : {3, 4, 9}) { // the last four; buffers of size + 1 bytes
        std::string want = size < 4 ? "ef" : "efgh";
        char a[16] = "?", b[16] = "?";
        line.SetCrntSelection(BCLimits(4, 8));
        lines->SetCrntSelection(BCLimits(4, 8));
        EXPECT_EQ(want.size() * 2, line.GetSelectedText(a, size) + lines->GetSelectedText(b, size));
        EXPECT_EQ(want + want, std::string(a) + b);
    }
    lines->SetText("0123456789abcdefXYZ"); // the dumps show 15 characters
    line.SetModified(0);
    lines->SetModified(1);
    MsgRecorder recorder;
    line.Display("L: ");
    lines->Display(nullptr);
    EXPECT_EQ("L: GetTextLen()=8\nIsModified()=0\n[0..15]={\n"
              "             61 62 63 64 65 66 67 68\n"
              "             00 00 00 00 00 00 00 00\n        }\n|"
              "GetTextLen()=19\nIsModified()=1\n[0..15]={\n"
              "             30 31 32 33 34 35 36 37\n"
              "             38 39 61 62 63 64 65 00\n        }\n|",
              recorder.Texts());
}

TEST(EditControlTest, LinesTabStopsFormatRectangleLengthLimitsScrollingAndUndo) {
    Frame frame;
    auto edit = Lines(frame, "abc\r\n\tX\r\nlast");
    EXPECT_TRUE(edit->GetLineCnt() == 3 && edit->GetLineLen(0) == 3 && edit->GetLineLen(12) == 4);
    char line[16];
    std::string got;
    for (unsigned int size : {10, 4, 3}) // n + 1 bytes: the CR is counted, then overwritten
        got += std::to_string(edit->GetTextLine(0, line, size)) + line + "|";
    EXPECT_EQ("5abc\r\n|4abc|3ab|", got);
    auto xOfX = [&edit] { // where the character after the tab lands
        return static_cast<short>(LOWORD(SendMessageA(edit->GetHandle(), EM_POSFROMCHAR, 6, 0)));
    };
    EXPECT_EQ(1, edit->SetTabStops(1, 16));
    short narrow = xOfX();
    EXPECT_TRUE(edit->SetTabStops(2, 64, 128) == 1 && xOfX() > narrow + 20);

    ASSERT_EQ(1, edit->SetFormatRect(BCRectangle(20, 10, 120, 100), 0));
    BCRectangle set = edit->GetFormatRect(); // the control keeps a margin inside
    EXPECT_TRUE(set.GetLeft() >= 20 && set.GetRight() <= 120 && set.GetRight() > 110);

    MsgRecorder recorder;
    std::string longest(32767, 'x');
    EXPECT_TRUE(edit->SetText(longest.c_str()) == 1 && edit->GetTextLen() == 32767);
    EXPECT_TRUE(edit->SetText((longest + "y").c_str()) == 0 && edit->GetTextLen() == 32767);
    ASSERT_EQ(Ids{10082}, recorder.NumberedIds());
    EXPECT_NE(std::string::npos, recorder.Last().text.find("(Attempted to edit 32768 characters"));

    std::string many;
    for (int i = 0; i < 60; ++i)
        many += "line\r\n";
    edit = Lines(frame, many.c_str(), 60);
    auto top = [&edit] { return SendMessageA(edit->GetHandle(), EM_GETFIRSTVISIBLELINE, 0, 0); };
    std::vector<LRESULT> tops;
    for (auto step : {&BCMultiStringEdit::LineDown, &BCMultiStringEdit::PageDown,
                      &BCMultiStringEdit::LineUp, &BCMultiStringEdit::PageUp}) {
        (edit.get()->*step)();
        tops.push_back(top());
    }
    edit->ScrollVert(7);
    tops.push_back(top());
    EXPECT_TRUE(tops[0] == 1 && tops[1] > 1 && tops[2] == tops[1] - 1 && tops[3] == 0 &&
                tops[4] == 7);
    edit->SetCrntSelection(BCLimits(0, -1));
    edit->SetCharLimit(3);
    edit->ReplaceSelectedText("abcdef");
    EXPECT_TRUE(TextOf(*edit) == "abc" && edit->CanUndo() && edit->EmptyUndo() && !edit->CanUndo());

    // Text data objects are filled, bound and owned as documented.
    bool gone = false;
    WatchedText mine(&gone, nullptr, nullptr, nullptr, nullptr, 0, nullptr);
    mine.SetText("mine\r\ntext", 0, 10, 1);
    char text[16];
    edit = Lines(frame, "typed");
    edit->SetModified(1);
    BCTextData* own = edit->GetText();
    ASSERT_TRUE(own && own->GetText(text, 0, 16) == 5 && own->IsModified() &&
                std::string(text) == "typed");
    edit->SetModified(0);
    EXPECT_TRUE(edit->GetText() == own && !own->IsModified());           // refilled in place
    EXPECT_TRUE(edit->SetText(&mine) == 1 && edit->SetText(&mine) == 1); // twice
    EXPECT_TRUE(!gone && TextOf(*edit) == "mine\r\ntext" && edit->IsModified());
    edit->SetCrntSelection(BCLimits(0, 4));
    edit->ReplaceSelectedText("your");
    EXPECT_TRUE(edit->GetText() == &mine && mine.GetText(text, 0, 4) == 4 &&
                std::string(text) == "your");
    EXPECT_TRUE(edit->SetText(static_cast<BCTextData*>(nullptr)) == 1 && TextOf(*edit).empty() &&
                edit->SetText(&mine) == 1);
    edit.reset();
    EXPECT_FALSE(gone); // the caller's object outlives the control

    recorder.Clear();
    edit = Lines(frame, "");
    EXPECT_TRUE(edit->SetText(reinterpret_cast<BCTextData*>(&frame.main)) == 0 && // not a text
                recorder.Count() == 1 && recorder.Last().file == "MLTEDIT" &&
                recorder.Last().line == 170);
}

TEST(ControlTest, StylesStatesTextsAndPainting) {
    Frame frame(true); // shown: the size box paints
    BCWindow* parent = &frame.main;
    BCPosition at(0, 0);
    BCSize size(80, 20);
    BCPushButton ok(1, parent, at, size, "OK", &App()), other(2, parent, at, size, "No", &App());
    BCCheckBox check(3, parent, at, size, "Check", &App());
    BCRadioButton radio(4, parent, at, size, "Radio", &App());
    auto low = Lines(frame, "", 24), high = Lines(frame, "", 25);
    BCStaticControl bare(77, parent, at, size, SS_LEFT | WS_CHILD, 1, &App());
    BCStaticText label(0, parent, at, size, "Label", WS_CHILD | SS_LEFT, &App());
    BCStaticIcon icon(10, parent, at, BCResID(32512u), &App());
    // Only button 1 is the default; a field lower than 25 is a single line; a plain static
    // control keeps the style given and takes its id for its type code.
    using Case = std::tuple<BCWindow*, unsigned int, unsigned long>;
    for (const Case& c :
         {Case{&ok, 34, 0x50000001}, Case{&other, 34, 0x50000000}, Case{low.get(), 39, 0x50800080},
          Case{high.get(), 39, 0x50B000C4}, Case{&bare, 77, 0x40000000}}) {
        auto [control, type, style] = c;
        EXPECT_TRUE(control->HandleCheck() && type == control->GetObjectType()) << type;
        EXPECT_EQ(style, static_cast<unsigned long>(control->GetStyle())) << type;
    }
    check.SetState(1);
    radio.SetState(1);
    EXPECT_EQ(2, check.GetState() + radio.GetState());
    char cut[4];
    EXPECT_TRUE(ok.SetText("Fine") && TextOf(ok) == "Fine" && ok.GetTextLen() == 4 &&
                label.SetText("Name:") && label.GetTextLen() == 5 &&
                label.GetText(cut, sizeof cut) == 3 && std::string(cut) == "Nam" &&
                SendMessageA(icon.GetHandle(), STM_GETICON, 0, 0));

    BCStaticText fromTable(10082, parent, at, size, nullptr, WS_CHILD, &App()),
        none(0, parent, at, size, nullptr, WS_CHILD, &App());
    EXPECT_TRUE(fromTable.GetTextLen() == 80 && !none.HandleCheck()); // the message text, cut
    EXPECT_EQ(0u, TextOf(fromTable).find("An edit control can only handle"));

    // A group box deletes its background; a size box draws its edges.
    bool gone = false;
    {
        BCGroupBox group(5, &frame.main, BCPosition(0, 0), BCSize(80, 40), "Group", &App());
        group.SetBackground(new Watched<BCBrush>(&gone));
    }
    EXPECT_TRUE(gone);

    BCSizeBox grip(9, &frame.main, BCPosition(40, 40), BCSize(20, 16), &App());
    ASSERT_TRUE(grip.Create(""));
    UpdateWindow(frame.main.GetHandle());
    auto edges = [&grip] { // the line's end point is not drawn
        HDC dc = GetDC(grip.GetHandle());
        std::vector<COLORREF> seen{GetPixel(dc, 19, 0), GetPixel(dc, 19, 15), GetPixel(dc, 1, 15),
                                   GetPixel(dc, 0, 15) == 0, GetPixel(dc, 1, 1) == 0};
        ReleaseDC(grip.GetHandle(), dc);
        return seen;
    };
    EXPECT_NE(0u, edges()[0] + edges()[1]);
    BCEvent paint(grip.GetHandle(), WM_PAINT, 0, 0);
    grip.Paint(&paint);
    EXPECT_EQ((std::vector<COLORREF>{0, 0, 0, 0, 0}), edges());
}

struct DragCountingEdit : BCMultiStringEdit {
    using BCMultiStringEdit::BCMultiStringEdit;
    LRESULT MouseDrag(BCEvent* e) override { return ++drags, BCMultiStringEdit::MouseDrag(e); }
    int drags = 0;
};

TEST(ControlTest, TemplateControlsAreBoundWithTheirTypes) {
    BCModelessDialog dialog(BCResID(600u), nullptr, &App());
    auto* lines = new DragCountingEdit(BCResID(101u), &dialog, &App());
    auto* check = new BCCheckBox(BCResID(103u), &dialog, &App());
    std::vector<BCWindow*> all{lines,
                               new BCStringEdit(BCResID(102u), &dialog, &App()),
                               check,
                               new BCRadioButton(BCResID(104u), &dialog, &App()),
                               new BCStaticText(BCResID(105u), &dialog, &App()),
                               new BCGroupBox(BCResID(106u), &dialog, &App()),
                               new BCSizeBox(BCResID(107u), &dialog, &App()),
                               new BCStaticIcon(BCResID(108u), &dialog, &App()),
                               new BCPushButton(BCResID(1u), &dialog, &App()),
                               new BCStaticControl(BCResID(2u), &dialog, &App())};
    ASSERT_TRUE(dialog.Create("Controls"));
    Ids types;
    for (BCWindow* c : all)
        types.push_back(c->HandleCheck() ? c->GetObjectType() : 0);
    EXPECT_EQ((Ids{39, 38, 35, 33, 48, 36, 46, 49, 34, 47}), types);

    check->SetState(BST_INDETERMINATE);
    EXPECT_TRUE(SendMessageA(check->GetHandle(), BM_GETCHECK, 0, 0) == BST_INDETERMINATE &&
                check->GetState() == 1);
    for (int bit : {0, 0x0800}) { // with the bit a drag goes straight to the control
        lines->SetStyle(0x0800, bit);
        lines->drags = 0;
        SendMessageA(lines->GetHandle(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5, 5));
        EXPECT_EQ(bit ? 0 : 1, lines->drags);
    }
    // With the bit, Enter makes a new line even inside a dialog.
    SendMessageA(lines->GetHandle(), WM_KEYDOWN, VK_RETURN, 0x1C0001);
    Input::Pump();
    EXPECT_EQ("\r\n", TextOf(*lines));
    dialog.EndDlg(2);
}

TEST(ControlTest, EveryOperationWithoutAWindowGivesItsNoWindowResult) {
    BCStringEdit line(BCResID(1u), nullptr, &App());
    BCMultiStringEdit lines(BCResID(1u), nullptr, &App());
    BCCheckBox check(BCResID(1u), nullptr, &App());
    BCRadioButton radio(BCResID(1u), nullptr, &App());
    BCStaticText label(BCResID(1u), nullptr, &App());
    BCComboBox box(BCResID(1u), nullptr, &App());
    BCArrayList list(4, 16, 0, 0, 4, 0);
    char buffer[8] = "keep";
    EXPECT_TRUE(line.GetText(buffer, 7) == 7 && lines.GetText(buffer, 9) == 9 &&
                box.GetText(buffer, 7) == 7);
    EXPECT_STREQ("keep", buffer); // the sizes come back, the buffer is left alone
    bool gone = false;
    WatchedText data(&gone, nullptr, nullptr, nullptr, nullptr, 0, nullptr);
    MsgRecorder recorder;
    EXPECT_EQ(0, line.SetText("x") + line.GetTextLen() + line.GetSelectedText(buffer, 8) +
                     line.SetPasswordChar('*') + line.IsModified() + line.SetModified(1) +
                     line.Undo() + line.CanUndo() + line.Cut() + line.Copy() + line.Paste());
    EXPECT_EQ(0, lines.SetText(std::string(40000, 'x').c_str()) + lines.SetText(&data) +
                     lines.GetTextLen() + lines.GetTextLine(0, buffer, 8) + lines.GetLineLen(0) +
                     lines.GetLineCnt() + lines.GetSelectedText(buffer, 8) + lines.EmptyUndo() +
                     lines.SetFormatRect(BCRectangle(1, 1, 9, 9), 1) + lines.FormatLines(1) +
                     lines.SetTabStops(1, 8));
    EXPECT_EQ(0, check.GetState() + check.SetState(1) + radio.GetState() + radio.SetState(1) +
                     check.SetText("x") + check.GetText(buffer, 8) + check.GetTextLen() +
                     label.SetText("x") + label.GetText(buffer, 8) + label.GetTextLen());
    EXPECT_EQ(-6, box.Append(buffer) + box.GetCount() + box.GetCrntInd() + box.GetItemLen(0) +
                      box.Find(buffer, 0, 0, 0) + box.Find(buffer, 0, 0, 1));
    EXPECT_EQ(0, box.Insert(buffer, 0) + box.Delete(0) + box.DeleteAll() + box.GoTo(0) +
                     box.GetCrntItem(buffer) + box.SetText("x") + box.GetTextLen() +
                     box.SetCharLimit(4) + box.GetSelectedText(buffer, 8) + box.GetItem(0, buffer) +
                     box.SetItemData(0, buffer) + box.LoadFromList(&list, BCGetTextFormat(), 0, 0) +
                     box.SaveToList(&list, BCGetTextFormat(), 0));
    EXPECT_TRUE(lines.GetText() == nullptr && !gone && recorder.Count() == 0 &&
                box.GetCrntItem() == nullptr && box.GetItemData(0) == nullptr);
    EXPECT_TRUE(line.GetCrntSelection() == BCLimits(0, 0) &&
                box.GetCrntSelection() == BCLimits(0, 0) &&
                lines.GetFormatRect() == BCGetNullRect());
}

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
}

// Every list kind fills a box and takes its entries back through the list protocol.
TEST(ComboBoxTest, LoadAndSaveWorkWithEveryListKind) {
    Frame frame;
    std::unique_ptr<BCComboBox> source(Combo(frame, CBS_DROPDOWN)), sorted(Combo(frame, CBS_SORT));
    for (const char* s : {"pear", "fig tree", "apple"})
        source->Append(Text(s));
    BCFormat& text = BCGetTextFormat();
    BCArrayList array(4, 16, 0, 0, 4, 0);
    BCHashList hash(7, 0, 16);
    BCStackList stack;
    for (BCList* list : std::initializer_list<BCList*>{&array, &hash, &stack}) {
        list->SetItemSize(16);
        ASSERT_EQ(1, source->SaveToList(list, text, 0));
        sorted->DeleteAll();
        ASSERT_EQ(1, sorted->LoadFromList(list, text, 0, 1));
        EXPECT_EQ((Strings{"apple", "fig tree", "pear"}), Entries(*sorted));
        for (int i = 0; i < 3; ++i) // each entry holds its item
            EXPECT_EQ(Entries(*sorted)[i], static_cast<char*>(sorted->GetItemData(i)));
    }
    BCDoubleLinkedList pointers(0x0800, 16), empty(0, 16);
    struct Refusing : BCDoubleLinkedList {
        Refusing() : BCDoubleLinkedList(0x0800, 16) {}
        int Append(void*, void*) override { return 0; }
    } full;
    struct Unreadable : BCDoubleLinkedList { // holds an item it cannot render
        Unreadable() : BCDoubleLinkedList(0, 16) {}
        unsigned long GetItemData(void*, void*, void*, unsigned long, BCFormat&) override {
            return 0;
        }
    } unreadable;
    char item[] = "kept";
    ASSERT_TRUE(unreadable.SetItemData(item, 4, text) && unreadable.GetCount() == 1u);
    EXPECT_TRUE(sorted->LoadFromList(&unreadable, text, 0, 0) == 0 && sorted->GetCount() == 3);
    EXPECT_EQ(0, sorted->SaveToList(&full, text, 1));
    ASSERT_TRUE(sorted->SaveToList(&pointers, text, 1) && pointers.GetCount() == 3u);
    pointers.Home();
    EXPECT_EQ(sorted->GetItemData(0), pointers.GetCrntItem());
    sorted->Append(Text(std::string(300, 'x').c_str()));
    EXPECT_EQ(0, sorted->SaveToList(&array, text, 0)); // an entry too long for a list item
    EXPECT_EQ(1, sorted->LoadFromList(&empty, text, 0, 0));
    EXPECT_EQ(0, sorted->LoadFromList(&empty, BCGetBitmapFormat(), 0, 0) +
                     sorted->SaveToList(&empty, BCGetBitmapFormat(), 0));
}

} // namespace

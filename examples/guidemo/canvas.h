#pragma once
#include <norlib2.h>

// A child window showing a graphic list of every shape kind, a text and a bitmap. The mouse
// picks the object on top under it and drags it (erase, move, draw); keys and mouse actions
// are reported to a list box.
class Canvas : public BCChildWindow {
  public:
    Canvas(BCWindow* parent, unsigned int id, BCListBox* log);
    ~Canvas() override;

    LRESULT Paint(BCEvent* e) override;
    LRESULT MouseDown(BCEvent* e) override;
    LRESULT MouseDrag(BCEvent* e) override;
    LRESULT MouseUp(BCEvent* e) override;
    LRESULT KeyDown(BCEvent* e) override;
    LRESULT CharKey(BCEvent* e) override;

  private:
    void Build();
    template <class... Args> long Report(const char* format, Args... args);

    BCListBox* log;
    BCGraphicList scene;
    BCGraphicObject* dragged = nullptr;
    BCPosition grip; // where in the object the mouse holds it
    BCPen* pens[3];
    BCBrush* brushes[3];
    BCPolyline* zigzag;
    BCPolyline* star;
    BCBitmap* picture;
};

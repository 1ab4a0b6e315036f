#include <windows.h>

#include "bcgdi.h"
#include "bcids1.h"
#include "bcplatform.h"
#include "bcstream.h"

namespace {
constexpr unsigned int kMaxPenWidth = 1000;

int IsPenStyle(unsigned int style) {
    return style >= BC_PEN_SOLID && style <= BC_PEN_INSIDEFRAME;
}

// The library numbers styles from 1; the platform from 0 in the same order.
int PlatformPenStyle(unsigned int style) {
    return static_cast<int>(style - BC_PEN_SOLID);
}
} // namespace

BCPen::BCPen(unsigned int style, unsigned int width, const BCColor& color, BCModule* module)
    : BCGdiObject(bcids::kTypePen, module), wStyle(IsPenStyle(style) ? style : BC_PEN_SOLID),
      wWidth(width > kMaxPenWidth ? kMaxPenWidth : width), crColor(color) {
    Make();
}

int BCPen::Make() {
    HPEN pen = BCTraced(
        CreatePen(PlatformPenStyle(wStyle), static_cast<int>(wWidth), crColor.GetCOLORREF()),
        "CreatePen");
    if (!pen) {
        DispObjectMsg(bcids::kMsgPenFailed, wStyle);
        return 0;
    }
    SetObjectHandle(pen, 1);
    return 1;
}

int BCPen::Load(std::istream& is) {
    unsigned int style = 0, width = 0;
    BCColor color;
    if (!BCObject::Load(is) || !BCLoadWord(is, style) || !BCLoadWord(is, width) || !color.Load(is))
        return 0;
    if (!IsPenStyle(style) || width > kMaxPenWidth)
        return 0;
    wStyle = style;
    wWidth = width;
    crColor = color;
    return Make();
}

int BCPen::Save(std::ostream& os) {
    return BCObject::Save(os) && BCSaveWord(os, wStyle) && BCSaveWord(os, wWidth) &&
           crColor.Save(os);
}

void BCPen::Display(const char* prefix) {
    DispObjectMsg("%swStyle=%u, wWidth=%u, dwRGB=%06lx", prefix ? prefix : "", wStyle, wWidth,
                  crColor.GetCOLORREF());
}

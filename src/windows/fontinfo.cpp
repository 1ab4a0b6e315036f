#include "bcfontinfo.h"

#include "bcdevice.h"
#include "bcids2.h"

namespace {
const char kFile[] = "FONTINFO";
constexpr unsigned int kLineNoDevice = 24;
constexpr unsigned int kLineNoContext = 25;
constexpr unsigned int kLineNoMetrics = 27;
} // namespace

BCFontInfo::BCFontInfo(BCDisplayDevice* opDev) : BCObject(bcids::kTypeFontInfo), tmMetrics() {
    if (!BCAssert(this, opDev != nullptr, kLineNoDevice, kFile, "Null pointer:  opDev"))
        return;
    TEXTMETRICA metrics;
    if (BCAssert(this, opDev->SelectDC(), kLineNoContext, kFile) &&
        BCAssert(this, GetTextMetricsA(static_cast<HDC>(opDev->GetDC()), &metrics), kLineNoMetrics,
                 kFile))
        tmMetrics = metrics;
    opDev->ReleaseDC(); // also the pair of a select that found no context
}

void BCFontInfo::Display(const char* prefix) {
    DispObjectMsg("%stmHeight=%d,\ntmAscent=%d,\ntmDescent=%d,\ntmInternalLeading=%d,\n"
                  "tmExternalLeading=%d,\ntmAveCharWidth=%d,\ntmMaxCharWidth=%d,\n",
                  prefix ? prefix : "", static_cast<int>(tmMetrics.tmHeight),
                  static_cast<int>(tmMetrics.tmAscent), static_cast<int>(tmMetrics.tmDescent),
                  static_cast<int>(tmMetrics.tmInternalLeading),
                  static_cast<int>(tmMetrics.tmExternalLeading),
                  static_cast<int>(tmMetrics.tmAveCharWidth),
                  static_cast<int>(tmMetrics.tmMaxCharWidth));
}

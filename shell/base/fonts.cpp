#include "shell/base/fonts.h"

#include <cstring>

namespace {

constexpr int k_points_per_inch = 72;

int pixels_per_inch() {
    HDC context = GetDC(nullptr);
    const int result = GetDeviceCaps(context, LOGPIXELSY);
    ReleaseDC(nullptr, context);
    return result;
}

}  // namespace

HFONT make_font(const wchar_t *face, int tenths, bool bold, bool screen) {
    const int per_inch = screen ? pixels_per_inch() : k_points_per_inch;
    constexpr int k_unit = 10 * k_points_per_inch;
    LOGFONTW font = {};
    font.lfHeight = -(tenths * per_inch / k_unit + 1);  // half a pixel more, then rounded
    font.lfWeight = bold ? FW_BOLD : FW_DONTCARE;
    font.lfCharSet = DEFAULT_CHARSET;
    wcsncpy(font.lfFaceName, face, LF_FACESIZE - 1);
    return CreateFontIndirectW(&font);
}

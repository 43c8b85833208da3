#include "host/windows/ui_metrics.h"

namespace kxhost {

UiMetrics::UiMetrics() {
    const WindowDc screen(nullptr);
    dpi_ = GetDeviceCaps(screen.Get(), LOGPIXELSY);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    LOGFONTW font = metrics.lfMessageFont;
    message_.reset(CreateFontIndirectW(&font));
    font.lfWeight = FW_BOLD;
    strong_.reset(CreateFontIndirectW(&font));
    font.lfHeight = MulDiv(font.lfHeight, 3, 2);
    heading_.reset(CreateFontIndirectW(&font));
}

int UiMetrics::LineHeight(HFONT font) const {
    const WindowDc screen(nullptr);
    const Selection selection(screen.Get(), font);
    TEXTMETRICW text{};
    GetTextMetricsW(screen.Get(), &text);
    return text.tmHeight;
}

}  // namespace kxhost

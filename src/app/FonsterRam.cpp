#include "app/FonsterRam.h"

#include <algorithm>

std::optional<BRect> LasRam(AttributeStore& store, const char* namn) {
    BRect ram;
    if (store.InitCheck() != B_OK ||
        store.ReadAttr(namn, B_RECT_TYPE, 0, &ram, sizeof ram) != sizeof ram || !RimligRam(ram))
        return std::nullopt;
    return ram;
}

BRect GetWindowSize(AttributeStore& store, BRect screen) {
    std::optional<BRect> lagrad = LasRam(store, "FJOLK:FirstWindow");
    BRect ram;
    if (lagrad) {
        ram = *lagrad;
    } else {
        int32_t w = screen.IntegerWidth();
        int32_t h = screen.IntegerHeight();
        float left = static_cast<float>(w / 2 - 320);
        float top = static_cast<float>(h / 2 - 200);
        ram = BRect(left, top, left + 640, top + 400);
        store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, &ram, sizeof ram);
        store.Sync();
    }
    return ram;
}

namespace {

// How much of a frame's top must lie on a screen for the window to be found and moved.
constexpr float kGreppBredd = 64;
constexpr float kGreppHojd = 32;

float Avstand(const BRect& ram, const BRect& skarm) {
    float dx = std::max({skarm.left - ram.right, ram.left - skarm.right, 0.0f});
    float dy = std::max({skarm.top - ram.bottom, ram.top - skarm.bottom, 0.0f});
    return dx * dx + dy * dy;
}

} // namespace

BRect FlyttaPaSkarm(BRect ram, const std::vector<BRect>& skarmar) {
    if (skarmar.empty())
        return ram;
    BRect topp(ram.left, ram.top, ram.right, ram.top + std::min(kGreppHojd, ram.Height()));
    for (const BRect& skarm : skarmar) {
        BRect synligt = topp & skarm;
        if (synligt.IsValid() && synligt.Width() >= std::min(kGreppBredd, ram.Width()))
            return ram;
    }
    const BRect* narmast = &skarmar.front();
    for (const BRect& skarm : skarmar)
        if (Avstand(ram, skarm) < Avstand(ram, *narmast))
            narmast = &skarm;
    // Inside the screen where it fits, from the screen's top left corner where it does not.
    float left = std::max(narmast->left, std::min(ram.left, narmast->right - ram.Width()));
    float top = std::max(narmast->top, std::min(ram.top, narmast->bottom - ram.Height()));
    return BRect(left, top, left + ram.Width(), top + ram.Height());
}

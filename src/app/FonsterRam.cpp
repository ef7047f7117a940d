#include "app/FonsterRam.h"

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

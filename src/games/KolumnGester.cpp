#include "games/KolumnGester.h"

#include <QPainter>

void LyftKorten(KortSpel& spel, SpelYta* view, const std::vector<Lucka>& luckor, int forsta,
                int topp, int under, BPoint where) {
    BRect ram = luckor[forsta].GePos() | luckor[topp].GePos();
    view->RitaBakgrund(ram);
    if (under >= 0 && !luckor[under].Tom()) {
        QPainter p(&view->OffBitmap());
        spel.RitaKort(p, luckor[under].GeKort().GePos(), luckor[under].GePos());
    }
    view->VisaNu(ram);
    std::vector<int> valda;
    for (int i = forsta; i <= topp; ++i)
        valda.push_back(i);
    spel.ByggDragBild(luckor, valda, where);
    KortSpel::point = where - luckor[forsta].GePos().LeftTop();
}

std::optional<BPoint> GreppPunkt(BRect r, BRect synligt,
                                 const std::function<bool(BPoint)>& traffar) {
    BPoint mitt((r.left + r.right) / 2, (r.top + r.bottom) / 2);
    for (BPoint p : {BPoint(mitt.x, r.top + 10), mitt, BPoint(mitt.x, r.bottom - 5)})
        if (synligt.Contains(p) && traffar(p))
            return p;
    return std::nullopt;
}

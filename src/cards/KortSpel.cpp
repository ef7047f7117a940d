#include "cards/KortSpel.h"

#include "cards/Hiscore.h"
#include "cards/KortUtSeende.h"
#include "platform/QtGeometry.h"

#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <string>

QImage KortSpel::bmp;
BPoint KortSpel::point;
QImage KortSpel::mp_kortbitmap;
QImage KortSpel::mp_kortsrcbitmap;
qreal KortSpel::pixelKvot = 1.0;
int KortSpel::antalSpel = 0;

namespace {

constexpr float kHorn = 15.0f;

// The outline of an empty slot: a black rounded rectangle inside the slot's edges.
QPainterPath Rundad(BRect pos, float radie) {
    QPainterPath path;
    QRectF r = ToQRectF(pos).adjusted(0.5, 0.5, -0.5, -0.5);
    path.addRoundedRect(r, radie, radie);
    return path;
}

} // namespace

// The pictures are shared by every game alive and let go with the last one; a new game
// loads the symbols afresh, as each game object always did.
KortSpel::KortSpel() {
    mp_kortsrcbitmap = LaddaKortSymboler(pixelKvot);
    symbolPos = SymbolRektanglar();
    kortPos.reserve(52);
    ++antalSpel;
}

KortSpel::~KortSpel() {
    if (--antalSpel == 0) {
        mp_kortbitmap = QImage();
        mp_kortsrcbitmap = QImage();
        bmp = QImage();
    }
}

void KortSpel::KortUtSeende_A(int w, int h) {
    RitaFramsidor(Utseende::A, w, h);
}

void KortSpel::KortUtSeende_B(int w, int h) {
    RitaFramsidor(Utseende::B, w, h);
}

void KortSpel::RitaFramsidor(Utseende utseende, int w, int h) {
    // The symbols follow the ratio: a view moved to a screen with more pixels wants them
    // drawn with more.
    if (!mp_kortsrcbitmap.isNull() && mp_kortsrcbitmap.devicePixelRatio() != SymbolKvot(pixelKvot))
        mp_kortsrcbitmap = LaddaKortSymboler(pixelKvot);
    // The old faces' picture is drawn over when it has the size (unless another holder
    // keeps it).
    KortBilder bilder =
        RitaKortUtSeende(utseende, w, h, mp_kortsrcbitmap, pixelKvot, std::move(mp_kortbitmap));
    mp_kortbitmap = std::move(bilder.bild);
    kortPos = std::move(bilder.kortPos);
    baksidaPos = bilder.baksidor;
}

BRect KortSpel::FramsidaFor(const Kort& kort) const {
    int index = 13 * kort.KortFarg() + kort.KortValor() - 1;
    if (index < 0 || index >= static_cast<int>(kortPos.size()))
        return BRect(0, 0, 0, 0);
    return kortPos[index];
}

void KortSpel::GeKortenFramsidor(std::vector<Lucka>& luckor) const {
    for (Lucka& lucka : luckor)
        if (!lucka.Tom())
            lucka.GeKort().NyPos(FramsidaFor(lucka.GeKort()));
}

// A face is w × h view units and a slot's inclusive rectangle one more each way: the face is
// copied one to one into the slot's top-left corner, never stretched by a pixel. The face's
// own pixels are taken, as many as the picture's ratio gives it.
void KortSpel::RitaKort(QPainter& p, BRect kortBild, BRect till) const {
    p.drawImage(ToQPoint(till.LeftTop()), mp_kortbitmap,
                TillPixlar(ToQRect(kortBild), mp_kortbitmap.devicePixelRatio()));
}

void KortSpel::RitaLucka(QPainter& p, const Lucka& lucka) const {
    if (!lucka.Tom())
        RitaKort(p, lucka.BakSida() ? baksidaPos[0] : lucka.GeKort().GePos(), lucka.GePos());
    else if (lucka.GeKantLinje())
        RitaKantLinje(p, lucka.GePos());
}

// The table's texts at the size the play view draws with, in the narrow face of our font:
// its widths are those the buttons and the markers on the cards were made for.
QFont KortSpel::BordsFont() {
    static const QString familj =
        QFontDatabase::families().contains(QStringLiteral("DejaVu Sans Condensed"))
            ? QStringLiteral("DejaVu Sans Condensed")
            : QStringLiteral("DejaVu Sans");
    QFont font(familj);
    font.setPixelSize(24);
    return font;
}

void KortSpel::RitaKantLinje(QPainter& p, BRect pos) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::black, 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawPath(Rundad(pos, kHorn));
    p.restore();
}

void KortSpel::RitaKnapp(QPainter& p, BRect pos, const char* text, rgb_color fyllning,
                         rgb_color textFarg) {
    RitaRundRuta(p, pos, 5.0f, fyllning);
    RitaText(p, BPoint(pos.left + 5, pos.top + 30), text, textFarg);
}

void KortSpel::RitaRundRuta(QPainter& p, BRect pos, float radie, rgb_color fyllning) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(Qt::black, 1.0));
    p.setBrush(ToQColor(fyllning));
    p.drawPath(Rundad(pos, radie));
    p.restore();
}

void KortSpel::RitaRaknare(QPainter& p, BRect pos, const char* text, int varde) {
    RitaRundRuta(p, pos, 5.0f, rgb_color{220, 220, 220, 255});
    RitaText(p, BPoint(pos.left + 5, pos.top + 30), text);
    RitaText(p, BPoint(pos.right - 40, pos.top + 30), std::to_string(varde).c_str());
}

void KortSpel::RitaText(QPainter& p, BPoint bas, const char* text, rgb_color farg) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(ToQColor(farg));
    p.setFont(BordsFont());
    p.drawText(QPointF(bas.x, bas.y), QString::fromUtf8(text));
    p.restore();
}

void KortSpel::ByggDragBild(const std::vector<Lucka>& luckor, const std::vector<int>& valda,
                            BPoint where) {
    BRect ram;
    bool forsta = true;
    for (int i : valda) {
        ram = forsta ? luckor[i].GePos() : (ram | luckor[i].GePos());
        forsta = false;
    }
    QRect yta = ToQRect(ram);
    QRect pixlar = TillPixlar(yta, pixelKvot);
    bmp = QImage(pixlar.size(), QImage::Format_ARGB32_Premultiplied);
    bmp.setDevicePixelRatio(pixelKvot);
    bmp.fill(Qt::transparent);
    QPainter p(&bmp);
    p.translate(-PixelPunkt(pixlar.topLeft(), pixelKvot));
    for (int i : valda)
        RitaLucka(p, luckor[i]);
    p.end();
    point = where - ram.LeftTop();
}

void KortSpel::SattAnimering(BRect fran, BRect till, BRect kort, BRect underPos, BRect underKort) {
    animFran = fran;
    animTill = till;
    animKort = kort;
    animUnderPos = underPos;
    animUnderKort = underKort;
}

void KortSpel::TTAnimeraKort(SpelYta* view, int tid, bool kant) {
    AnimeraKort(view, tid, kant, true, Flygande::Framsida);
}

void KortSpel::UUAnimeraKort(SpelYta* view, int tid, bool kant) {
    AnimeraKort(view, tid, kant, false, Flygande::Framsida);
}

void KortSpel::XXAnimeraKort(SpelYta* view, int tid, bool kant) {
    AnimeraKort(view, tid, kant, true, Flygande::DragBild);
}

// The flight blocks the window as the cards always did: a tight loop timed by the clock,
// each step drawn into the off-screen frame over what the card covered before, and put
// on the screen at once. The card lies on whole view units, and what it covers is kept and
// put back pixel for pixel.
void KortSpel::AnimeraKort(SpelYta* view, int tid, bool kant, bool visaUnder, Flygande vad) {
    QImage& frame = view->OffBitmap();
    view->RitaBakgrund(animFran);
    {
        QPainter p(&frame);
        if (visaUnder && animUnderPos != BRect(0, 0, 0, 0))
            RitaKort(p, animUnderKort, animUnderPos);
        if (kant)
            RitaKantLinje(p, animFran);
    }
    view->VisaNu(animFran);

    QImage bild =
        vad == Flygande::DragBild
            ? bmp
            : mp_kortbitmap.copy(TillPixlar(ToQRect(animKort), mp_kortbitmap.devicePixelRatio()));
    const qreal kvot = frame.devicePixelRatio();
    // The card's pixels in the frame: its own, unless it was drawn for another ratio.
    const QSize storlek(
        static_cast<int>(std::ceil(bild.width() * kvot / bild.devicePixelRatio())),
        static_cast<int>(std::ceil(bild.height() * kvot / bild.devicePixelRatio())));
    QImage under(storlek, frame.format());
    under.setDevicePixelRatio(kvot);

    auto lagg = [&](BPoint var) {
        QRect r(TillPixlar(QPoint(static_cast<int>(var.x), static_cast<int>(var.y)), kvot),
                storlek);
        {
            QPainter p(&under);
            p.setCompositionMode(QPainter::CompositionMode_Source);
            p.drawImage(QPointF(0, 0), frame, r);
        }
        QPainter p(&frame);
        p.drawImage(PixelPunkt(r.topLeft(), kvot), bild);
        return r;
    };
    auto aterstall = [&](const QRect& r) {
        QPainter p(&frame);
        p.setCompositionMode(QPainter::CompositionMode_Source);
        p.drawImage(PixelPunkt(r.topLeft(), kvot), under);
    };
    auto visa = [&](const QRect& pixlar) { view->VisaNu(ToBRect(FranPixlar(pixlar, kvot))); };

    BPoint fran = animFran.LeftTop();
    BPoint vag = animTill.LeftTop() - fran;
    bigtime_t start = system_time();
    QRect forra = lagg(fran);
    visa(forra);
    int forraSteg = 0;
    for (;;) {
        bigtime_t e = system_time() - start;
        if (e > tid)
            break;
        int steg = static_cast<int>(400 * e / (tid > 0 ? tid : 1));
        if (steg == forraSteg)
            continue;
        forraSteg = steg;
        aterstall(forra);
        BPoint var(fran.x + vag.x * static_cast<float>(steg) / 400.0f,
                   fran.y + vag.y * static_cast<float>(steg) / 400.0f);
        QRect nu = lagg(var);
        visa(forra.united(nu));
        forra = nu;
    }
    aterstall(forra);
    QRect sist = lagg(animTill.LeftTop());
    visa(forra.united(sist));
}

bool Patiens::LamnatKlickRutan(BPoint press, BPoint now) const {
    return now.x < press.x - 4 || now.x > press.x + 4 || now.y < press.y - 4 || now.y > press.y + 4;
}

bool LamnatOjamnKlickRuta(BPoint press, BPoint now) {
    return now.x <= press.x - 4 || now.x > press.x + 4 || now.y <= press.y - 4 ||
           now.y > press.y + 4;
}

Patiens::Avsikt Patiens::VantaPaAvsikt(SpelYta* view, BPoint where) const {
    BPoint nu;
    uint32_t knappar = 0;
    view->GetMouse(&nu, &knappar);
    if (knappar == 0 || nu == where)
        return Avsikt::Klick;
    return Avsikt::Drag;
}

void Patiens::RitaBordet() {
    vy->RitaOm(*this);
}

void Patiens::VisaNyttSpel() {
    RitaBordet();
    startTid = system_time();
}

void Patiens::RitaBaksidor(int forsta, int sista) {
    const std::vector<Lucka>& luckor = Tabell().luckor;
    {
        QPainter p(&vy->OffBitmap());
        for (int i = forsta; i <= sista; ++i)
            if (!luckor[i].Tom())
                RitaKort(p, baksidaPos[0], luckor[i].GePos());
    }
    vy->VisaNu(vy->Bounds());
}

void Patiens::FlygLucka(int fran, int till, int under, int tid, bool kant, bool baksidaUnder) {
    const std::vector<Lucka>& luckor = Tabell().luckor;
    BRect underPos(0, 0, 0, 0);
    BRect underKort(0, 0, 0, 0);
    if (under >= 0 && !luckor[under].Tom()) {
        underPos = luckor[under].GePos();
        underKort = luckor[under].BakSida() || baksidaUnder ? baksidaPos[0]
                                                            : luckor[under].GeKort().GePos();
    }
    SattAnimering(luckor[fran].GePos(), luckor[till].GePos(), luckor[fran].GeKort().GePos(),
                  underPos, underKort);
    TTAnimeraKort(vy, tid, kant);
}

bool Patiens::KlickaEllerLyft(SpelYta* view, BPoint where, int kalla,
                              const std::optional<Drag>& klick, Flygledare* flyg) {
    if (VantaPaAvsikt(view, where) == Avsikt::Klick) {
        if (klick)
            Regler().GorDrag(Tabell(), *klick, flyg);
        return false;
    }
    valdaLuckor = {kalla};
    ByggDragBild(Tabell().luckor, valdaLuckor, where);
    return true;
}

int Patiens::SlapptKort(SpelYta* view, BPoint* where) {
    int kalla = valdaLuckor.size() == 1 ? valdaLuckor.front() : -1;
    valdaLuckor.clear();
    uint32_t knappar = 0;
    view->GetMouse(where, &knappar);
    return kalla;
}

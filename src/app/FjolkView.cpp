#include "app/FjolkView.h"

#include "app/DragFonster.h"
#include "app/Tangentbord.h"
#include "app/TillgangligtBord.h"
#include "cards/Fro.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace {

const QRect kStorstaBordet(0, 0, FjolkView::kMaxBredd, FjolkView::kMaxHojd);

} // namespace

FjolkView::FjolkView(QWidget* parent) : QWidget(parent), kvot(devicePixelRatioF()) {
    setObjectName(QStringLiteral("PView"));
    // Every pixel is painted from the off-screen frame: nothing to erase first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(false);
    setFocusPolicy(Qt::StrongFocus);
    tangentbord = std::make_unique<Tangentbord>(*this);
    TillgangligtBord::Installera();
    // The games made on this view render their cards for its screen.
    KortSpel::pixelKvot = kvot;
}

QImage& FjolkView::Ram() {
    if (offBitmap.isNull()) {
        offBitmap = Buffert();
        offBitmap.fill(ToQColor(kBordsGron));
    }
    return offBitmap;
}

QImage FjolkView::Buffert() const {
    QImage buffert(TillPixlar(kStorstaBordet, kvot).size(), QImage::Format_ARGB32_Premultiplied);
    buffert.setDevicePixelRatio(kvot);
    return buffert;
}

FjolkView::~FjolkView() = default;

FjolkView::Arbete::Arbete(FjolkView& view) : vy(view) {
    ++vy.arbete;
}

FjolkView::Arbete::~Arbete() {
    if (--vy.arbete == 0)
        vy.ArbeteKlart();
}

void FjolkView::ArbeteKlart() {
    if (kvotVantar) {
        kvotVantar = false;
        FoljSkarmen();
    }
    if (omRaknaVantar) {
        omRaknaVantar = false;
        OmRakna();
    }
    if (slappVantar) {
        slappVantar = false;
        Slapp(slappPunkt);
    }
    if (efterArbete)
        efterArbete();
}

void FjolkView::GivAvFro(unsigned fro) {
    if (spel != nullptr && !spel->ForstaGivetBlandat())
        MedFro(fro, [this] { spel->NyttSpel(Bounds()); });
}

void FjolkView::SattSpel(std::unique_ptr<Patiens> nytt) {
    if (dragFonster != nullptr)
        dragFonster->Gom();
    spel = std::move(nytt);
    drar = false;
    gest = Gest::Ingen;
    platserGamla = true;
    if (spel)
        InvalidateOffscreen();
    // The keys play the game shown.
    if (spel && isVisible())
        setFocus();
}

std::unique_ptr<Patiens> FjolkView::TaSpel() {
    if (dragFonster != nullptr)
        dragFonster->Gom();
    drar = false;
    gest = Gest::Ingen;
    std::unique_ptr<Patiens> gammalt = std::move(spel);
    // The next game is dealt on an empty table, not over this one's last picture.
    if (HarRam()) {
        QPainter p(&offBitmap);
        LaggBakgrund(p, rect().intersected(kStorstaBordet));
    }
    return gammalt;
}

void FjolkView::TaEmotSpel(const std::function<std::unique_ptr<Patiens>()>& skapa) {
    Arbete arbetet(*this);
    KortSpel::pixelKvot = kvot;
    tarEmot = true;
    std::unique_ptr<Patiens> nytt = skapa();
    tarEmot = false;
    givs = nullptr;
    SattSpel(std::move(nytt));
}

BRect FjolkView::Bounds() const {
    return ToBRect(rect());
}

// The background buffer is only needed for a picture: the plain table is filled with its
// green directly. Made at the largest size when a picture is first chosen, it is made again
// only for a screen with another ratio.
void FjolkView::FyllBakgrund() {
    if (bakgrundsBild.isNull())
        return;
    if (backBitmap.isNull() || backBitmap.devicePixelRatio() != kvot)
        backBitmap = Buffert();
    // The picture is stretched over the table as large as it is now, straight into the
    // buffer's pixels.
    backBitmap.fill(ToQColor(kBordsGron));
    QPainter p(&backBitmap);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(rect().intersected(kStorstaBordet), bakgrundsBild);
}

void FjolkView::SattPixelKvot(qreal nyKvot) {
    kvot = nyKvot;
    if (HarRam()) {
        offBitmap = Buffert();
        offBitmap.fill(ToQColor(kBordsGron));
    }
    if (!backBitmap.isNull())
        backBitmap = Buffert();
    OmRakna();
    update();
}

// A game at work keeps its pictures until the work is over: a flight has its buffers.
void FjolkView::FoljSkarmen() {
    qreal skarmens = devicePixelRatioF();
    if (skarmens == kvot)
        return;
    if (Arbetar()) {
        kvotVantar = true;
        return;
    }
    SattPixelKvot(skarmens);
}

// A new screen tells the view; a screen whose scale changes under a window that stays tells
// no widget in this Qt, so the ratio is also compared before each paint, one comparison.
bool FjolkView::event(QEvent* event) {
    if (event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show ||
        event->type() == QEvent::Paint)
        FoljSkarmen();
    return QWidget::event(event);
}

void FjolkView::SattBakgrundsBild(const QImage& bild) {
    bakgrundsBild = bild.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    FyllBakgrund();
    if (spel)
        InvalidateOffscreen();
}

void FjolkView::RensaBakgrundsBild() {
    bakgrundsBild = QImage();
    FyllBakgrund();
    if (spel)
        InvalidateOffscreen();
}

void FjolkView::InvalidateOffscreen() {
    platserGamla = true;
    if (!spel)
        return;
    Komponera(*spel);
    update();
}

void FjolkView::Komponera(Patiens& game) {
    QPainter p(&Ram());
    QRect yta = rect().intersected(kStorstaBordet);
    LaggBakgrund(p, yta);
    game.RitaSpel(p);
}

void FjolkView::RitaOm(Patiens& game) {
    if (tarEmot)
        givs = &game;
    Komponera(game);
    VisaNu(Bounds());
}

void FjolkView::RitaBakgrund(BRect rect) {
    QRect yta = ToQRect(rect).intersected(kStorstaBordet);
    QPainter p(&Ram());
    LaggBakgrund(p, yta);
}

void FjolkView::LaggBakgrund(QPainter& p, const QRect& yta) {
    QPainter::CompositionMode lage = p.compositionMode();
    p.setCompositionMode(QPainter::CompositionMode_Source);
    // The plain table is all one green: filling it is half the memory traffic of copying
    // the background buffer, which holds nothing else then.
    if (bakgrundsBild.isNull()) {
        p.fillRect(yta, ToQColor(kBordsGron));
    } else {
        QRect pixlar = TillPixlar(yta, kvot);
        p.drawImage(PixelPunkt(pixlar.topLeft(), kvot), backBitmap, pixlar);
    }
    p.setCompositionMode(lage);
}

void FjolkView::VisaNu(BRect rect) {
    if (!isVisible())
        return;
    QRect yta = ToQRect(rect).intersected(this->rect());
    if (!yta.isEmpty())
        repaint(yta);
    // The game holds the thread until its work is done; meanwhile the other windows (an
    // alert that has just opened) paint, and the window system's input waits its turn.
    if (Arbetar())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// The frame is shown whenever the view is: the table being dealt, the game's, or the empty
// table a game is about to be dealt on. Its pixels are the screen's, copied one to one; a
// pixel more each way is taken, so that at a ratio that is not whole the damaged area's edge
// pixels are covered whichever way the screen rounds them.
void FjolkView::paintEvent(QPaintEvent* event) {
    QPainter p(this);
    if (!HarRam()) {
        p.fillRect(event->rect(), ToQColor(kBordsGron));
        return;
    }
    QRect pixlar =
        TillPixlar(event->rect(), kvot).adjusted(-1, -1, 1, 1).intersected(offBitmap.rect());
    p.setCompositionMode(QPainter::CompositionMode_Source);
    p.drawImage(PixelPunkt(pixlar.topLeft(), kvot), offBitmap, pixlar);
    if (spel && tangentbord->Synlig())
        RitaFokus(p);
}

void FjolkView::resizeEvent(QResizeEvent*) {
    // A game is not laid out again under its own feet: a flight has its places.
    if (Arbetar() && (spel || tarEmot)) {
        omRaknaVantar = true;
        return;
    }
    OmRakna();
}

void FjolkView::OmRakna() {
    platserGamla = true;
    if (!bakgrundsBild.isNull())
        FyllBakgrund();
    KortSpel::pixelKvot = kvot;
    if (spel) {
        spel->OmRaknaLuckaKort(Bounds());
        InvalidateOffscreen();
    } else if (HarRam()) {
        QPainter p(&offBitmap);
        LaggBakgrund(p, rect().intersected(kStorstaBordet));
    }
}

QPoint FjolkView::DragHorn() const {
    return mapToGlobal(ToQPoint(musPunkt - KortSpel::point));
}

void FjolkView::GetMouse(BPoint* where, uint32_t* buttons) const {
    if (where != nullptr)
        *where = musPunkt;
    if (buttons != nullptr)
        *buttons = musKnappar;
}

void FjolkView::GorHalvTransparant(QImage& bitmap) {
    // The alpha is set, not scaled: every visible pixel of the dragged cards becomes 200.
    // Premultiplied pixels keep their colour by being scaled to the new alpha.
    if (bitmap.format() != QImage::Format_ARGB32_Premultiplied)
        bitmap = bitmap.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < bitmap.height(); ++y) {
        auto* rad = reinterpret_cast<QRgb*>(bitmap.scanLine(y));
        for (int x = 0; x < bitmap.width(); ++x) {
            QRgb pixel = rad[x];
            int alfa = qAlpha(pixel);
            if (alfa == 0 || alfa == 200)
                continue;
            auto skala = [&](int c) { return (c * 200 + alfa / 2) / alfa; };
            rad[x] = qRgba(skala(qRed(pixel)), skala(qGreen(pixel)), skala(qBlue(pixel)), 200);
        }
    }
}

void FjolkView::Klart() {
    if (spel && spel->KlarSpel())
        QCoreApplication::postEvent(window(), new Meddelande(kSpelKlart));
}

// The press sequence, run once the gesture has told click from drag.
void FjolkView::MouseDown(BPoint where) {
    if (!spel || tryckSparr)
        return;
    drar = false;
    bool plockat = spel->FlyttaKort(this, where);
    if (!plockat) {
        InvalidateOffscreen();
    } else {
        drar = true;
        GorHalvTransparant(KortSpel::bmp);
        if (dragFonster == nullptr)
            dragFonster = new DragFonster(this);
        dragFonster->Visa(KortSpel::bmp, kDragAlfa, DragHorn());
    }
    spel->SpelKnapp(where);
    Klart();
}

void FjolkView::MouseUp(BPoint) {
    if (!spel)
        return;
    tryckSparr = false;
    if (!drar)
        return;
    if (dragFonster != nullptr)
        dragFonster->Gom();
    spel->Drop(this, -1);
    InvalidateOffscreen();
    drar = false;
    Klart();
}

// A press that reaches the view while the game works starts nothing: the cards are not the
// player's until the work is over. Any button presses; the gesture is the first button's,
// and ends with its release.
void FjolkView::mousePressEvent(QMouseEvent* event) {
    if (!spel || Arbetar())
        return;
    // The mouse takes over from the keys: cards they held go back first.
    tangentbord->Avbryt();
    if (gest != Gest::Ingen)
        return;
    if (tangentbord->Synlig()) {
        tangentbord->Gom();
        update();
    }
    // The release reaches this view wherever it happens, as the press grabs the mouse.
    BorjaBeratta();
    gest = Gest::Tryckt;
    gestKnapp = event->button();
    tryckPunkt = ToBPoint(event->position());
    musPunkt = tryckPunkt;
    musKnappar = 1;
}

void FjolkView::mouseMoveEvent(QMouseEvent* event) {
    if (!spel || Arbetar())
        return;
    BPoint nu = ToBPoint(event->position());
    if (gest == Gest::Tryckt) {
        if (!spel->LamnatKlickRutan(tryckPunkt, nu))
            return;
        // Latched here: later moves of the same gesture only move the cards.
        gest = Gest::Drag;
        musPunkt = nu;
        musKnappar = 1;
        Arbete arbetet(*this);
        MouseDown(tryckPunkt);
        return;
    }
    if (gest == Gest::Drag && drar) {
        musPunkt = nu;
        if (dragFonster != nullptr)
            dragFonster->Flytta(DragHorn());
    }
}

void FjolkView::mouseReleaseEvent(QMouseEvent* event) {
    if (!spel || (gest != Gest::Ingen && event->button() != gestKnapp))
        return;
    BPoint slapp = ToBPoint(event->position());
    if (Arbetar()) {
        // The gesture's own work is still under way: its release comes after.
        if (gest != Gest::Ingen) {
            slappVantar = true;
            slappPunkt = slapp;
        }
        return;
    }
    Slapp(slapp);
}

void FjolkView::Slapp(BPoint slapp) {
    if (!spel)
        return;
    Arbete arbetet(*this);
    Gest var = gest;
    gest = Gest::Ingen;
    musKnappar = 0;
    if (var == Gest::Tryckt) {
        // Released inside the square: a click at the press point.
        musPunkt = tryckPunkt;
        MouseDown(tryckPunkt);
        MouseUp(slapp);
    } else if (var == Gest::Drag) {
        musPunkt = slapp;
        MouseUp(slapp);
    }
    if (efterGest)
        efterGest();
    Beratta();
}

// ---- The keyboard -------------------------------------------------------------------------

Tangentbord& FjolkView::Tangenterna() {
    if (platserGamla && !tangentbord->Haller()) {
        platserGamla = false;
        tangentbord->Folj();
    }
    return *tangentbord;
}

bool FjolkView::KanTaTangent() const {
    return spel && !Arbetar() && (gest == Gest::Ingen || tangentbord->Haller());
}

void FjolkView::keyPressEvent(QKeyEvent* event) {
    if (!KanTaTangent() || !Tangenterna().Tangent(*event)) {
        QWidget::keyPressEvent(event);
        return;
    }
    update();
}

void FjolkView::KlickaVid(BPoint p) {
    if (!KanTaTangent() || gest != Gest::Ingen)
        return;
    BorjaBeratta();
    gest = Gest::Tryckt;
    gestKnapp = Qt::LeftButton;
    tryckPunkt = p;
    musPunkt = p;
    musKnappar = 1;
    Slapp(p);
}

bool FjolkView::LyftVid(BPoint p) {
    if (!KanTaTangent() || gest != Gest::Ingen)
        return false;
    Arbete arbetet(*this);
    BorjaBeratta();
    gest = Gest::Drag;
    gestKnapp = Qt::LeftButton;
    tryckPunkt = p;
    // The pointer has left the press point, as a drag's has.
    musPunkt = BPoint(p.x, p.y + 1);
    musKnappar = 1;
    MouseDown(p);
    if (drar)
        return true;
    // Nothing was taken: the gesture ends as a drag that took nothing does.
    Slapp(musPunkt);
    return false;
}

void FjolkView::BarTill(BPoint q) {
    if (gest != Gest::Drag || !drar)
        return;
    musPunkt = q;
    if (dragFonster != nullptr)
        dragFonster->Flytta(DragHorn());
}

void FjolkView::SlappVid(BPoint q) {
    if (gest != Gest::Drag || Arbetar())
        return;
    musPunkt = q;
    Slapp(q);
}

// The cards were never let go: they lie where they lay, and the game forgets them.
void FjolkView::LaggTillbaka() {
    if (gest != Gest::Drag)
        return;
    if (dragFonster != nullptr)
        dragFonster->Gom();
    gest = Gest::Ingen;
    musKnappar = 0;
    drar = false;
    if (spel)
        spel->valdaLuckor.clear();
    gestFore.reset();
    InvalidateOffscreen();
    if (efterGest)
        efterGest();
}

// The place in the frame becomes the focused object; what was done is a notification of the
// table.
void FjolkView::Meddela(const std::string& text, bool nyPlats) {
    if (!TillgangligtBord::Lyssnar())
        return;
    meddelat = text;
    auto* bord = dynamic_cast<TillgangligtBord*>(QAccessible::queryAccessibleInterface(this));
    if (bord == nullptr)
        return;
    if (!nyPlats) {
        bord->Ropa(QString::fromStdString(text));
    } else if (QAccessibleInterface* plats = bord->focusChild()) {
        QAccessibleEvent fokus(plats, QAccessible::Focus);
        QAccessible::updateAccessibility(&fokus);
    }
}

namespace {

BordIOrd IOrd(const Patiens& spel) {
    return {spel.Regler().Hogar(spel.Tabell()), spel.Luckor()};
}

} // namespace

void FjolkView::BorjaBeratta() {
    gestFore.reset();
    if (spel && TillgangligtBord::Lyssnar())
        gestFore = IOrd(*spel);
}

// What the gesture or command did, and "won" when it won the game.
void FjolkView::Beratta(const std::string& vad) {
    std::optional<BordIOrd> fore = std::exchange(gestFore, std::nullopt);
    if (!fore || !spel)
        return;
    std::string text = BeskrivAndring(*fore, IOrd(*spel));
    if (text.empty() && vad.empty())
        return;
    Meddela(vad.empty() ? text : text.empty() ? vad : vad + ": " + text);
    if (!text.empty() && spel->KlarSpel())
        Meddela("won");
}

void FjolkView::GorOchBeratta(const std::string& vad, const std::function<void()>& gor) {
    BorjaBeratta();
    gor();
    Beratta(vad);
}

// Two view units of yellow inside a dark edge, on whole device pixels so that it is sharp
// at every ratio, around the place in focus.
void FjolkView::RitaFokus(QPainter& p) {
    const BordsPlats* plats = Tangenterna().FokusPlats();
    if (plats == nullptr)
        return;
    QRect r = TillPixlar(ToQRect(plats->ram), kvot);
    int bredd = std::max(2, qRound(2 * kvot));
    int kant = std::max(1, qRound(kvot));
    p.save();
    p.resetTransform();
    p.scale(1 / kvot, 1 / kvot);
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
    auto ram = [&](QRect yta, int tjocklek, QColor farg) {
        p.fillRect(QRect(yta.left(), yta.top(), yta.width(), tjocklek), farg);
        p.fillRect(QRect(yta.left(), yta.bottom() - tjocklek + 1, yta.width(), tjocklek), farg);
        p.fillRect(QRect(yta.left(), yta.top(), tjocklek, yta.height()), farg);
        p.fillRect(QRect(yta.right() - tjocklek + 1, yta.top(), tjocklek, yta.height()), farg);
    };
    QRect yttre = r.adjusted(-bredd - kant, -bredd - kant, bredd + kant, bredd + kant);
    ram(yttre, kant, QColor(40, 30, 0));
    ram(yttre.adjusted(kant, kant, -kant, -kant), bredd, QColor(255, 220, 0));
    ram(r, kant, QColor(40, 30, 0));
    p.restore();
}

#include "app/Spelhjalp.h"

#include "app/FjolkView.h"
#include "cards/KortSpel.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/QtGeometry.h"
#include "welcome/WelcomeView.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

constexpr const char* kBaraVinnbara = "FJOLK:BaraVinnbara";
constexpr const char* kSlutforSjalv = "FJOLK:SlutforSjalv";
constexpr const char* kVarnaForlorad = "FJOLK:VarnaForlorad";
constexpr int kTipsTid = 1200;
constexpr int kBeskedTid = 5000;

bool LasPa(AttributeStore& store, const char* namn) {
    char pa = 0;
    return store.InitCheck() == B_OK && store.ReadAttr(namn, B_BOOL_TYPE, 0, &pa, 1) == 1 &&
           pa != 0;
}

void Mus(QWidget* vy, QEvent::Type typ, BPoint p) {
    QPointF punkt(ToQPoint(p));
    Qt::MouseButton knapp = typ == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    Qt::MouseButtons nere = typ == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent e(typ, punkt, vy->mapToGlobal(punkt), knapp, nere, Qt::NoModifier);
    QCoreApplication::sendEvent(vy, &e);
}

// The table after `drag`, recounted as the game recounts it after a gesture.
std::unique_ptr<SpelBord> Efter(const SpelRegler& regler, const SpelBord& fore, const Drag& drag) {
    auto efter = fore.Kopia();
    regler.GorDrag(*efter, drag, nullptr);
    regler.KlarSpel(*efter);
    return efter;
}

// Whether a player could make `drag` on `bord` in a view of `synligt`, judged from where its
// slots lie: the card it lifts shows its top edge, and so does the place it goes to or the
// card it lands on. It reads the table alone, so the solver's thread may ask it; the game's
// own gesture is still looked for when the move is made.
bool SynligtDrag(const SpelBord& bord, const Drag& drag, BRect synligt) {
    auto kant = [&](int i, float ner) {
        if (i < 0 || i >= static_cast<int>(bord.luckor.size()))
            return false;
        BRect r = bord.luckor[static_cast<std::size_t>(i)].GePos();
        return synligt.Contains(BPoint((r.left + r.right) / 2, r.top + ner));
    };
    switch (drag.slag) {
    case DragSlag::Kort:
    case DragSlag::Rad:
        return kant(drag.fran, 10) &&
               (kant(drag.till, 5) || kant(drag.till - 1, 5) || kant(drag.andra, 5));
    case DragSlag::Par:
        return kant(drag.fran, 10) && kant(drag.andra, 10);
    case DragSlag::Knapp:
    case DragSlag::NyttForsok:
        break;
    }
    return true;
}

} // namespace

Bordsnotis::Bordsnotis(FjolkView* view) : QWidget(view), vy(view) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setObjectName(QStringLiteral("notice"));
    setGeometry(vy->rect());
    vy->installEventFilter(this);
    klocka.setSingleShot(true);
    connect(&klocka, &QTimer::timeout, this, [this] { Rensa(); });
    hide();
}

void Bordsnotis::Visa(const QString& nyText, std::vector<QRect> nyaRamar, int ms, bool beratta) {
    text = nyText;
    ramar = std::move(nyaRamar);
    klocka.stop();
    if (ms > 0)
        klocka.start(ms);
    setGeometry(parentWidget()->rect());
    Placera();
    show();
    raise();
    update();
    // A hint or an answer is heard as well as seen.
    if (beratta)
        static_cast<FjolkView*>(parentWidget())->Meddela(text.toStdString());
}

void Bordsnotis::Rensa() {
    klocka.stop();
    text.clear();
    ramar.clear();
    ruta = QRect();
    hide();
}

bool Bordsnotis::eventFilter(QObject* mal, QEvent* e) {
    if (mal == parentWidget() && e->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
        Placera();
    }
    return false;
}

QFont Bordsnotis::Font(int pixlar) {
    QFont font = KortSpel::BordsFont();
    font.setPixelSize(pixlar);
    font.setBold(true);
    return font;
}

std::vector<QRect> Bordsnotis::Hinder() const {
    std::vector<QRect> hinder;
    const Patiens* spel = vy->Spel();
    if (spel == nullptr)
        return hinder;
    for (const Lucka& l : spel->Luckor())
        if (!l.Tom())
            hinder.push_back(ToQRect(l.GePos()));
    for (const Patiens::KnappPlats& knapp : spel->Knappar())
        hinder.push_back(ToQRect(knapp.ruta));
    // The outlines a hint draws around its cards.
    for (const QRect& r : ramar)
        hinder.push_back(r.adjusted(-5, -5, 5, 5));
    return hinder;
}

namespace {

// What the plain green table shows besides its green, in cells of kCell × kCell view pixels,
// summed so that any rectangle's count is four look-ups.
class Ritat {
public:
    static constexpr int kCell = 4;
    Ritat(const QImage& ram, QSize vy)
        : bredd(vy.width() / kCell + 1), hojd(vy.height() / kCell + 1) {
        summa.assign(static_cast<std::size_t>((bredd + 1) * (hojd + 1)), 0);
        const qreal kvot = ram.devicePixelRatio();
        const QRgb gron = qRgb(kBordsGron.red, kBordsGron.green, kBordsGron.blue);
        const int w = std::min(ram.width(), static_cast<int>(vy.width() * kvot));
        const int h = std::min(ram.height(), static_cast<int>(vy.height() * kvot));
        std::vector<char> fylld(static_cast<std::size_t>(bredd * hojd), 0);
        for (int y = 0; y < h; ++y) {
            const QRgb* rad = reinterpret_cast<const QRgb*>(ram.constScanLine(y));
            const int cy = static_cast<int>(y / kvot) / kCell;
            for (int x = 0; x < w; ++x)
                if ((rad[x] | 0xff000000u) != gron)
                    fylld[static_cast<std::size_t>(cy * bredd +
                                                   static_cast<int>(x / kvot) / kCell)] = 1;
        }
        for (int cy = 0; cy < hojd; ++cy)
            for (int cx = 0; cx < bredd; ++cx)
                At(cx + 1, cy + 1) = fylld[static_cast<std::size_t>(cy * bredd + cx)] +
                                     At(cx, cy + 1) + At(cx + 1, cy) - At(cx, cy);
    }
    bool Tomt(const QRect& r) const {
        int x0 = std::clamp(r.left() / kCell, 0, bredd),
            x1 = std::clamp(r.right() / kCell + 1, 0, bredd);
        int y0 = std::clamp(r.top() / kCell, 0, hojd),
            y1 = std::clamp(r.bottom() / kCell + 1, 0, hojd);
        return At(x1, y1) - At(x0, y1) - At(x1, y0) + At(x0, y0) == 0;
    }

private:
    int& At(int x, int y) { return summa[static_cast<std::size_t>(y * (bredd + 1) + x)]; }
    int At(int x, int y) const { return summa[static_cast<std::size_t>(y * (bredd + 1) + x)]; }
    int bredd;
    int hojd;
    std::vector<int> summa;
};

} // namespace

// The widest box that fits in a free part of the table, as low as it can lie and as near the
// middle, in a smaller type when the table leaves too little room for the usual one. On the
// plain green table it keeps clear of all that is drawn on it (a game's counters and empty
// places too) when it can, else of the cards, buttons and a hint's outlines; when the cards
// leave no room at all, it lies at the bottom over them.
void Bordsnotis::Placera() {
    ruta = QRect();
    pixlar = kPixlar.front();
    if (text.isEmpty())
        return;
    constexpr int kKant = 6;
    std::vector<QRect> hinder = Hinder();
    std::optional<Ritat> ritat;
    if (vy->HarRam() && vy->BakgrundsBild().isNull() && vy->Spel() != nullptr)
        ritat.emplace(vy->OffBitmap(), size());
    auto storlek = [&](int px, int bredd) {
        QRect inne = QFontMetrics(Font(px)).boundingRect(QRect(0, 0, bredd - 20, 10000),
                                                         Qt::TextWordWrap, text);
        return QSize(std::min(bredd, inne.width() + 20), inne.height() + 12);
    };
    const int storst = width() - 2 * kKant;
    for (bool allt : {true, false}) {
        if (allt && !ritat)
            continue;
        auto ledig = [&](const QRect& r) {
            QRect med = r.adjusted(-2, -2, 2, 2);
            return (!allt || ritat->Tomt(med)) &&
                   std::none_of(hinder.begin(), hinder.end(),
                                [&](const QRect& h) { return h.intersects(med); });
        };
        for (int px : kPixlar)
            for (int bredd = storst; bredd >= std::min(storst, 160);
                 bredd -= std::max(8, storst / 16)) {
                QSize s = storlek(px, bredd);
                int mitt = (width() - s.width()) / 2;
                for (int y = height() - kKant - s.height(); y >= kKant; y -= 3)
                    for (int dx = 0; dx <= mitt - kKant; dx += 6)
                        for (int x : {mitt - dx, mitt + dx})
                            if (ledig(QRect(QPoint(x, y), s))) {
                                ruta = QRect(QPoint(x, y), s);
                                pixlar = px;
                                return;
                            }
            }
    }
    // Over the cards, in the largest type that fits the view's height; in a view too low for
    // any, its beginning shows.
    QSize s;
    for (int px : kPixlar) {
        pixlar = px;
        s = storlek(px, storst);
        if (s.height() <= height() - 2 * kKant)
            break;
    }
    ruta = QRect(QPoint((width() - s.width()) / 2, std::max(0, height() - kKant - s.height())), s);
}

void Bordsnotis::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(255, 220, 0), 4));
    p.setBrush(Qt::NoBrush);
    for (const QRect& r : ramar)
        p.drawRoundedRect(QRectF(r).adjusted(-3, -3, 3, 3), 5, 5);
    if (text.isEmpty())
        return;
    p.setFont(Font(pixlar));
    p.setPen(QPen(QColor(60, 60, 40), 1));
    p.setBrush(QColor(255, 255, 230));
    p.drawRoundedRect(QRectF(ruta).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    p.setPen(Qt::black);
    p.drawText(ruta.adjusted(10, 6, -10, -6), Qt::AlignCenter | Qt::TextWordWrap, text);
}

Spelhjalp::Spelhjalp(QWidget* fonster, FjolkView* view, WelcomeView* valkomstVy,
                     AttributeStore& attributStore, QMenu* spelMeny)
    : QObject(fonster), vy(view), valkomst(valkomstVy), store(attributStore),
      trad(this, [this](int id, const SokSvar& svar) { Besvara(id, svar); }) {
    // After the game's own items, before the separator over "Exit".
    QAction* fore = nullptr;
    for (QAction* item : spelMeny->actions())
        if (item->isSeparator())
            fore = item;
    auto item = [&](const char* text, void (Spelhjalp::*gor)()) {
        auto* action = new QAction(QString::fromUtf8(text), spelMeny);
        spelMeny->insertAction(fore, action);
        connect(action, &QAction::triggered, this, [this, gor] { (this->*gor)(); });
        return action;
    };
    tipsItem = item("Hint", &Spelhjalp::Tips);
    tipsItem->setShortcut(QKeySequence(Qt::Key_H));
    slutforItem = item("Finish", &Spelhjalp::Slutfor);
    fragaItem = item("Can This Deal Be Won?", &Spelhjalp::KanVinnas);

    QWidget* flik = valkomst->optionFlik;
    auto ruta = [&](const char* text, const char* namn, int y, const char* beskrivning) {
        auto* r = new QCheckBox(QString::fromUtf8(text), flik);
        r->setObjectName(QString::fromUtf8(namn));
        r->setAccessibleDescription(QString::fromUtf8(beskrivning));
        r->setGeometry(330, y, 260, 24);
        r->setChecked(LasPa(store, namn));
        connect(r, &QCheckBox::toggled, this, [this, namn](bool pa) { Spara(namn, pa); });
        return r;
    };
    vinnbaraRuta = ruta("Winnable Deals Only", kBaraVinnbara, 60,
                        "Every deal is one the solver has shown can be won");
    sjalvRuta = ruta("Finish by Itself", kSlutforSjalv, 110,
                     "When every card left can go home, they are played home for you");
    forlorasRuta = ruta("Tell Me When the Deal Is Lost", kVarnaForlorad, 160,
                        "A quiet notice names the move after which the deal can no longer be won");
    // Tab comes to them after the Options tab's buttons.
    QWidget::setTabOrder(valkomst->aterstallKnapp, vinnbaraRuta);
    QWidget::setTabOrder(vinnbaraRuta, sjalvRuta);
    QWidget::setTabOrder(sjalvRuta, forlorasRuta);

    notis = new Bordsnotis(vy);
    qApp->installEventFilter(this);
    MenusBeginning();
}

Spelhjalp::~Spelhjalp() {
    qApp->removeEventFilter(this);
}

SokGranser Spelhjalp::SpelarGranser() {
    SokGranser granser;
    granser.lagen = 1'000'000;
    return granser;
}

void Spelhjalp::Spara(const char* namn, bool pa) {
    if (store.InitCheck() != B_OK)
        return;
    char varde = pa ? 1 : 0;
    store.WriteAttr(namn, B_BOOL_TYPE, 0, &varde, 1);
    store.Sync();
}

void Spelhjalp::Aterstall() {
    for (QCheckBox* r : {vinnbaraRuta, sjalvRuta, forlorasRuta}) {
        QSignalBlocker tyst(r);
        r->setChecked(false);
    }
    for (const char* namn : {kBaraVinnbara, kSlutforSjalv, kVarnaForlorad})
        store.RemoveAttr(namn);
    store.Sync();
}

void Spelhjalp::BaraVinnbaraForKorningen() {
    QSignalBlocker tyst(vinnbaraRuta);
    vinnbaraRuta->setChecked(true);
}

bool Spelhjalp::BaraVinnbara() const {
    return vinnbaraRuta->isChecked();
}

void Spelhjalp::MenusBeginning() {
    bool spel = vy->Spel() != nullptr && !givSok;
    for (QAction* item : {tipsItem, slutforItem, fragaItem})
        item->setEnabled(spel);
    tipsItem->setText(vantar == Fraga::Tips ? QStringLiteral("Hint (searching...)")
                                            : QStringLiteral("Hint"));
    slutforItem->setText(Slutfors() || vantar == Fraga::Slutfor || vantar == Fraga::SlutforSynligt
                             ? QStringLiteral("Finish (under way...)")
                             : QStringLiteral("Finish"));
    fragaItem->setText(vantar == Fraga::KanVinnas
                           ? QStringLiteral("Can This Deal Be Won? (searching...)")
                           : QStringLiteral("Can This Deal Be Won?"));
}

void Spelhjalp::Stall(Fraga fraga, SokGranser granser) {
    Patiens* spel = vy->Spel();
    vantar = fraga;
    fragat = spel->Tabell().Kopia();
    ++serie;
    trad.Fraga(serie * 8 + static_cast<int>(fraga), spel->Regler(), spel->Tabell(),
               std::move(granser));
    MenusBeginning();
}

bool Spelhjalp::KandHar(const SpelBord& bord) const {
    return kandBord != nullptr && kandBord->Lika(bord);
}

void Spelhjalp::Tips() {
    if (vy->Spel() == nullptr)
        return;
    if (KandHar(vy->Spel()->Tabell())) {
        VisaTips();
        return;
    }
    // The game's own first choice at once; the solution's move when the search has one.
    VisaGissning(QStringLiteral("Hint (a guess while the search goes on): "));
    Stall(Fraga::Tips);
}

void Spelhjalp::KanVinnas() {
    if (vy->Spel() == nullptr)
        return;
    if (KandHar(vy->Spel()->Tabell())) {
        VisaSvar();
        return;
    }
    notis->Visa(QStringLiteral("Searching this deal..."));
    Stall(Fraga::KanVinnas);
}

void Spelhjalp::Slutfor() {
    if (vy->Spel() == nullptr || Slutfors() || vantar == Fraga::SlutforSynligt)
        return;
    if (KandHar(vy->Spel()->Tabell()) && kand.utfall == Utfall::Vinnbar) {
        BorjaSlutfora(kand.drag);
        return;
    }
    if (KandHar(vy->Spel()->Tabell())) {
        VisaSvar();
        return;
    }
    notis->Visa(QStringLiteral("Searching for a way to finish..."));
    Stall(Fraga::Slutfor);
}

QString Spelhjalp::DragText(const SpelBord& fore, const Drag& drag) const {
    return QString::fromStdString(DragIOrd(vy->Spel()->Regler(), fore, drag));
}

std::vector<QRect> Spelhjalp::Ramar(const Drag& drag) const {
    const std::vector<Lucka>& luckor = vy->Spel()->Luckor();
    auto pos = [&](int i) {
        return i >= 0 && i < static_cast<int>(luckor.size()) ? ToQRect(luckor[i].GePos()) : QRect();
    };
    std::vector<QRect> ramar;
    switch (drag.slag) {
    case DragSlag::Kort:
        ramar = {pos(drag.fran), pos(drag.till)};
        break;
    case DragSlag::Rad: {
        QRect kallan;
        for (int i = drag.fran; i < drag.fran + drag.antal; ++i)
            kallan |= pos(i);
        ramar = {kallan, pos(drag.andra >= 0 ? drag.andra : drag.till)};
        break;
    }
    case DragSlag::Par:
        ramar = {pos(drag.fran), pos(drag.andra)};
        break;
    case DragSlag::Knapp:
    case DragSlag::NyttForsok:
        if (std::optional<Gest> gest = vy->Spel()->GestFor(drag)) {
            QPoint p = ToQPoint(gest->fran);
            ramar = {QRect(p - QPoint(20, 20), QSize(40, 40))};
        }
        break;
    }
    std::erase_if(ramar, [](const QRect& r) { return r.isEmpty(); });
    return ramar;
}

void Spelhjalp::VisaTips() {
    senasteTips.reset();
    Patiens* spel = vy->Spel();
    const SpelBord& bord = spel->Tabell();
    if (kand.utfall == Utfall::Ovinnbar) {
        notis->Visa(QStringLiteral("This deal can no longer be won from here. Undo may help."), {},
                    kBeskedTid);
        return;
    }
    if (kand.utfall == Utfall::Vinnbar && !kand.drag.empty()) {
        const Drag& d = kand.drag.front();
        senasteTips = d;
        notis->Visa(QStringLiteral("Hint: ") + DragText(bord, d), Ramar(d), kTipsTid);
        return;
    }
    VisaGissning(QStringLiteral("Hint (a guess, no solution was found): "));
}

void Spelhjalp::VisaGissning(const QString& forklaring) {
    senasteTips.reset();
    const SpelRegler& regler = vy->Spel()->Regler();
    const SpelBord& bord = vy->Spel()->Tabell();
    std::vector<Drag> dragen = regler.LagligaDrag(bord);
    const SokKunskap& kunskap = regler.Kunskap();
    kunskap.Ordna(bord, dragen);
    std::erase_if(dragen, [&](const Drag& d) { return !kunskap.Sokbart(d); });
    if (dragen.empty()) {
        notis->Visa(QStringLiteral("No move is left to hint at."), {}, kBeskedTid);
        return;
    }
    senasteTips = dragen.front();
    notis->Visa(forklaring + DragText(bord, dragen.front()), Ramar(dragen.front()), kTipsTid);
}

void Spelhjalp::VisaSvar() {
    switch (kand.utfall) {
    case Utfall::Vinnbar:
        notis->Visa(QStringLiteral("Yes, in %1 moves").arg(kand.drag.size()), {}, kBeskedTid);
        break;
    case Utfall::Ovinnbar:
        notis->Visa(QStringLiteral("No"), {}, kBeskedTid);
        break;
    case Utfall::Okant:
        notis->Visa(QStringLiteral("Not known after %1 positions").arg(kand.lagen), {}, kBeskedTid);
        break;
    }
}

void Spelhjalp::Besvara(int id, const SokSvar& svar) {
    Fraga fraga = static_cast<Fraga>(id % 8);
    if (id / 8 != serie || fraga != vantar)
        return;
    vantar = Fraga::Ingen;
    if (fraga == Fraga::Giv && givSok) {
        MenusBeginning();
        if (svar.utfall == Utfall::Vinnbar)
            givSok->giv.hittad = true;
        ProvaNastaGiv();
        return;
    }
    if (vy->Spel() == nullptr)
        return;
    const SpelBord& bord = vy->Spel()->Tabell();
    if (fraga == Fraga::Koll) {
        std::unique_ptr<SpelBord> fore = std::move(kollFore);
        if (koll == nullptr || !koll->Lika(bord))
            return;
        kandBord = std::move(koll);
        kand = svar;
        if (senasteBord != nullptr && senasteBord->Lika(bord))
            senasteUtfall = svar.utfall;
        if (svar.utfall == Utfall::Ovinnbar && fore != nullptr) {
            QString dragText = QStringLiteral("The last move");
            const SpelRegler& regler = vy->Spel()->Regler();
            for (const Drag& d : regler.LagligaDrag(*fore))
                if (Efter(regler, *fore, d)->Lika(bord)) {
                    dragText = QStringLiteral("The move ") + DragText(*fore, d);
                    break;
                }
            // A redeal that clears the undo records leaves nothing to undo.
            notis->Visa(dragText + (vy->Spel()->Has_Undos()
                                        ? QStringLiteral(" lost this deal: it can no longer be "
                                                         "won. Undo may help.")
                                        : QStringLiteral(" lost this deal: it can no longer be "
                                                         "won.")));
        }
        MenusBeginning();
        return;
    }
    if (fraga == Fraga::SlutforSynligt) {
        SvarSynligVag(svar);
        MenusBeginning();
        return;
    }
    kandBord = bord.Kopia();
    kand = svar;
    if (senasteBord != nullptr && senasteBord->Lika(bord))
        senasteUtfall = svar.utfall;
    notis->Rensa();
    if (fraga == Fraga::Tips)
        VisaTips();
    else if (fraga == Fraga::KanVinnas)
        VisaSvar();
    else if (fraga == Fraga::Slutfor && svar.utfall == Utfall::Vinnbar)
        BorjaSlutfora(svar.drag);
    else if (fraga == Fraga::Slutfor)
        VisaSvar();
    MenusBeginning();
}

void Spelhjalp::EfterDrag() {
    Patiens* spel = vy->Spel();
    if (spel == nullptr || givSok)
        return;
    const SpelBord& bord = spel->Tabell();
    if (senasteBord != nullptr && senasteBord->Lika(bord))
        return;
    const SpelRegler& regler = spel->Regler();
    // A known solution stays known along its own moves.
    if (kandBord != nullptr && !kandBord->Lika(bord)) {
        if (kand.utfall == Utfall::Vinnbar && !kand.drag.empty() &&
            Efter(regler, *kandBord, kand.drag.front())->Lika(bord)) {
            kandBord = bord.Kopia();
            kand.drag.erase(kand.drag.begin());
        } else {
            kandBord.reset();
        }
    }
    std::unique_ptr<SpelBord> fore = std::exchange(senasteBord, bord.Kopia());
    std::optional<Utfall> foreUtfall = std::exchange(senasteUtfall, std::nullopt);
    if (KandHar(bord))
        senasteUtfall = kand.utfall;
    if (vantar != Fraga::Ingen && vantar != Fraga::Koll && !Slutfors() &&
        (fragat == nullptr || !fragat->Lika(bord))) {
        // What was asked about the table before is no answer for this one.
        trad.Avbryt();
        vantar = Fraga::Ingen;
        notis->Rensa();
    }
    if (notis->Ramar().empty() && !notis->Text().isEmpty() && vantar == Fraga::Ingen)
        notis->Rensa();
    if (Slutfors() || egnaGester)
        return;
    if (sjalvRuta->isChecked())
        if (std::optional<std::vector<Drag>> hem = HemDrag()) {
            BorjaSlutfora(std::move(*hem));
            return;
        }
    if (!forlorasRuta->isChecked() || senasteUtfall)
        return;
    // Only a table known to be winnable can be lost by the move from it.
    kollFore = foreUtfall == Utfall::Vinnbar ? std::move(fore) : nullptr;
    koll = bord.Kopia();
    Stall(Fraga::Koll);
}

std::optional<std::vector<Drag>> Spelhjalp::HemDrag() const {
    const SpelRegler& regler = vy->Spel()->Regler();
    auto bord = vy->Spel()->Tabell().Kopia();
    if (regler.KlarSpel(*bord))
        return std::nullopt;
    std::vector<Drag> hem;
    // Only moves that change what the hiscore counts: a card put on its foundation.
    for (int steg = 0; steg < 104; ++steg) {
        int kort = regler.Resultat(*bord).kort;
        std::optional<Drag> nasta;
        for (const Drag& d : regler.LagligaDrag(*bord)) {
            if (d.slag != DragSlag::Kort)
                continue;
            auto efter = Efter(regler, *bord, d);
            if (regler.Resultat(*efter).kort != kort &&
                efter->luckor.size() == bord->luckor.size()) {
                nasta = d;
                bord = std::move(efter);
                break;
            }
        }
        if (!nasta)
            return std::nullopt;
        hem.push_back(*nasta);
        if (regler.KlarSpel(*bord))
            return hem;
    }
    return std::nullopt;
}

void Spelhjalp::BorjaSlutfora(std::vector<Drag> dragen) {
    slutDrag.assign(dragen.begin(), dragen.end());
    notis->Rensa();
    MenusBeginning();
    QTimer::singleShot(0, this, [this] { NastaSlutDrag(); });
}

void Spelhjalp::NastaSlutDrag() {
    Patiens* spel = vy->Spel();
    if (slutDrag.empty() || spel == nullptr) {
        SlutaSlutfora();
        return;
    }
    if (vy->Arbetar() || vy->GestPagar()) {
        QTimer::singleShot(50, this, [this] { NastaSlutDrag(); });
        return;
    }
    Drag d = slutDrag.front();
    slutDrag.pop_front();
    // A card the window is too small to show cannot be pressed: no gesture makes the move, or
    // it would miss.
    std::optional<Gest> gest = spel->GestFor(d);
    const QRect synligt = vy->rect();
    if (!gest || !synligt.contains(ToQPoint(gest->fran)) ||
        (!gest->klick && !synligt.contains(ToQPoint(gest->till)))) {
        SlutaSlutfora();
        QString stopp = QStringLiteral("Finish stopped: the move ") + DragText(spel->Tabell(), d) +
                        QStringLiteral(" cannot be made in the window as it is. A larger "
                                       "window may show its card.");
        if (!SokSynligVag(stopp))
            notis->Visa(stopp, {}, kBeskedTid);
        return;
    }
    egnaGester = true;
    Mus(vy, QEvent::MouseButtonPress, gest->fran);
    if (!gest->klick) {
        Mus(vy, QEvent::MouseMove, gest->fran + BPoint(12, 12));
        Mus(vy, QEvent::MouseMove, gest->till);
    }
    Mus(vy, QEvent::MouseButtonRelease, gest->klick ? gest->fran : gest->till);
    egnaGester = false;
    if (slutDrag.empty())
        SlutaSlutfora();
    else
        QTimer::singleShot(vy->Spel() != nullptr && vy->Spel()->animera ? 120 : 0, this,
                           [this] { NastaSlutDrag(); });
}

void Spelhjalp::SlutaSlutfora() {
    slutDrag.clear();
    MenusBeginning();
}

bool Spelhjalp::SokSynligVag(const QString& stopp) {
    const SpelBord& bord = vy->Spel()->Tabell();
    if (synligtBord != nullptr && synligtBord->Lika(bord) && synligtStorlek == vy->size())
        return false;
    synligtBord = bord.Kopia();
    synligtStorlek = vy->size();
    synligtStopp = stopp;
    SokGranser granser = SpelarGranser();
    granser.bara = [synligt = vy->Bounds()](const SpelBord& b, const Drag& d) {
        return SynligtDrag(b, d, synligt);
    };
    notis->Visa(QStringLiteral("Searching for a way to finish that the window can show..."));
    Stall(Fraga::SlutforSynligt, std::move(granser));
    return true;
}

void Spelhjalp::SvarSynligVag(const SokSvar& svar) {
    const SpelBord& bord = vy->Spel()->Tabell();
    notis->Rensa();
    if (synligtBord == nullptr || !synligtBord->Lika(bord))
        return;
    // Such a search tells nothing when it finds no way: the table's verdict stays as it was.
    if (svar.utfall != Utfall::Vinnbar) {
        notis->Visa(synligtStopp, {}, kBeskedTid);
        return;
    }
    kandBord = bord.Kopia();
    kand = svar;
    BorjaSlutfora(svar.drag);
}

bool Spelhjalp::eventFilter(QObject* mal, QEvent* e) {
    // Any click or key of the player's stops a finish.
    if (Slutfors() && !egnaGester &&
        (e->type() == QEvent::MouseButtonPress || e->type() == QEvent::KeyPress)) {
        auto* widget = qobject_cast<QWidget*>(mal);
        if (widget != nullptr && widget->window() == vy->window()) {
            SlutaSlutfora();
            notis->Visa(QStringLiteral("Finish stopped."), {}, kTipsTid);
        }
    }
    return false;
}

void Spelhjalp::SpeletSlut() {
    trad.Avbryt();
    vantar = Fraga::Ingen;
    givSok.reset();
    slutDrag.clear();
    kandBord.reset();
    senasteBord.reset();
    senasteUtfall.reset();
    koll.reset();
    kollFore.reset();
    synligtBord.reset();
    notis->Rensa();
    vy->setEnabled(true);
}

void Spelhjalp::SokVinnbarGiv(int spel, std::function<void(unsigned)> dela) {
    SpeletSlut();
    givSok = GivSok{spel,
                    static_cast<unsigned>(std::rand()),
                    {},
                    std::chrono::steady_clock::now() + kVinnbarTid,
                    std::move(dela)};
    vy->setEnabled(false);
    MenusBeginning();
    ProvaNastaGiv();
}

void Spelhjalp::ProvaNastaGiv() {
    GivSok& sok = *givSok;
    bool slut =
        sok.giv.hittad || (sok.giv.forsok > 0 && (sok.giv.forsok >= kVinnbarForsok ||
                                                  std::chrono::steady_clock::now() >= sok.slut));
    if (slut) {
        GivSok klar = std::move(sok);
        givSok.reset();
        vy->setEnabled(true);
        // Disabled while the search ran, the view lost the keyboard; the player's keys are
        // for the table again.
        vy->setFocus();
        std::srand(klar.giv.fro);
        klar.dela(klar.giv.fro);
        EfterDrag();
        // Told for a few seconds when a winnable deal was found; else until the first move.
        notis->Visa(QString::fromStdString(VinnbarText(klar.spel, klar.giv)), {},
                    klar.giv.hittad ? kBeskedTid : 0);
        MenusBeginning();
        return;
    }
    sok.giv.fro = VinnbarFro(sok.bas, sok.giv.forsok++);
    // Heard once: a screen reader would read out every deal tried.
    notis->Visa(
        QStringLiteral("Looking for a deal that can be won (deal %1)...").arg(sok.giv.forsok), {},
        0, sok.giv.forsok == 1);
    auto bord = GivFor(sok.spel, sok.giv.fro);
    vantar = Fraga::Giv;
    ++serie;
    trad.Fraga(serie * 8 + static_cast<int>(Fraga::Giv), *ReglerFor(sok.spel), *bord,
               VinnbarGranser());
}

#include "welcome/WelcomeView.h"

#include "cards/Statistik.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "platform/Notices.h"
#include "platform/QtGeometry.h"

#include <QApplication>
#include <QCheckBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyledItemDelegate>
#include <QTabWidget>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <tuple>

namespace {

QRect Ram(float l, float t, float r, float b) {
    return ToQRect(BRect(l, t, r, b));
}

// The rows' fixed-width font. DejaVu Sans Mono comes with the program's set-up; the
// system's fixed-width font stands in only where it is missing.
QFont FastBredd(int storlek) {
    const QString dejaVu = QStringLiteral("DejaVu Sans Mono");
    QFont font = QFontDatabase::hasFamily(dejaVu)
                     ? QFont(dejaVu)
                     : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPixelSize(storlek);
    return font;
}

// Below this a text is no longer read at a glance; a control's font never gets smaller.
constexpr int kMinstaStorlek = 7;
constexpr int kStatistikStorlek = 12;

bool Ryms(const QFont& font, const QStringList& texter, int ledig) {
    QFontMetricsF fm(font);
    return std::all_of(texter.begin(), texter.end(), [&](const QString& text) {
        return std::ceil(fm.horizontalAdvance(text)) <= ledig;
    });
}

// The narrower face of our plain font, for texts that the plain one makes too wide.
QFont Smal(QFont font) {
    const QString smal = QStringLiteral("DejaVu Sans Condensed");
    if (QFontDatabase::hasFamily(smal))
        font.setFamily(smal);
    return font;
}

// `font` at `storst` if every one of `texter` is at most `ledig` pixels wide in it; else
// its narrower face at the largest size, from `storst` down, at which they are.
QFont PassandeFont(QFont font, const QStringList& texter, int ledig, int storst) {
    font.setPixelSize(storst);
    if (Ryms(font, texter, ledig))
        return font;
    font = Smal(font);
    int storlek = storst;
    for (; storlek > kMinstaStorlek; --storlek) {
        font.setPixelSize(storlek);
        if (Ryms(font, texter, ledig))
            break;
    }
    font.setPixelSize(storlek);
    return font;
}

void SattStorlek(QWidget* w, int storlek) {
    QFont font = w->font();
    font.setPixelSize(storlek);
    w->setFont(font);
}

// The room a check box or button leaves for its text inside its frame.
int Textrum(QAbstractButton* knapp, QStyle::SubElement del) {
    QStyleOptionButton option;
    option.initFrom(knapp);
    return knapp->style()->subElementRect(del, &option, knapp).width();
}

// Rows of fixed-width text, each drawn from a known point so that the column headings can
// be placed over the columns.
constexpr qreal kRadMarginal = 1;

class RadRitare : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* p, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem o = option;
        initStyleOption(&o, index);
        const QString text = o.text;
        o.text.clear();
        const QWidget* lista = o.widget;
        QStyle* stil = lista != nullptr ? lista->style() : QApplication::style();
        stil->drawControl(QStyle::CE_ItemViewItem, &o, p, lista);
        const bool vald = (o.state & QStyle::State_Selected) != 0;
        QFontMetricsF fm(o.font);
        p->save();
        p->setFont(o.font);
        p->setPen(o.palette.color(vald ? QPalette::HighlightedText : QPalette::Text));
        qreal bas = o.rect.top() + (o.rect.height() - fm.height()) / 2 + fm.ascent();
        p->drawText(QPointF(o.rect.left() + kRadMarginal, bas), text);
        p->restore();
    }
};

// The player's name shows from its first letter whenever it is not being typed: when it
// is set from the stored name or the hiscore list, and when the typing is done.
class NamnFalt : public QLineEdit {
public:
    NamnFalt(const QString& text, QWidget* parent) : QLineEdit(text, parent) {
        connect(this, &QLineEdit::textChanged, this, [this] {
            if (!hasFocus())
                setCursorPosition(0);
        });
    }

protected:
    void focusOutEvent(QFocusEvent* e) override {
        QLineEdit::focusOutEvent(e);
        setCursorPosition(0);
    }
};

// A heading's words: each runs up to and including its colon, the last to the end.
QStringList RubrikensOrd(const QString& rubrik) {
    QStringList ord;
    qsizetype start = 0;
    for (qsizetype i = 0; i < rubrik.size(); ++i)
        if (rubrik[i] == QLatin1Char(':')) {
            ord << rubrik.mid(start, i + 1 - start).trimmed();
            start = i + 1;
        }
    QString sista = rubrik.mid(start).trimmed();
    if (!sista.isEmpty())
        ord << sista;
    return ord;
}

// A hiscore row as a screen reader reads it, each value after its heading's word: "1. Eva,
// cards done 12, deal 2, undos 5, time to play 05:07, date 3/2 2001"; an empty row "7.
// empty".
QString RadIOrd(int index, const QString& rad, const QString& rubrik,
                const std::vector<int>& kolumner) {
    const QStringList ord = RubrikensOrd(rubrik);
    const QList<uint> tecken = rad.toUcs4();
    auto falt = [&](size_t k) {
        qsizetype fran = kolumner[k];
        qsizetype till = k + 1 < kolumner.size() ? kolumner[k + 1] : tecken.size();
        till = std::min(till, tecken.size());
        if (fran >= till)
            return QString();
        return QString::fromUcs4(reinterpret_cast<const char32_t*>(tecken.constData()) + fran,
                                 till - fran)
            .trimmed();
    };
    QString text = QString::number(index + 1) + QLatin1Char('.');
    if (kolumner.size() < 2 || falt(0).isEmpty())
        return text + QStringLiteral(" empty");
    text += QLatin1Char(' ') + falt(1);
    for (size_t k = 2; k < kolumner.size() && k < static_cast<size_t>(ord.size()); ++k) {
        QString varde = falt(k);
        QString namn = ord[static_cast<qsizetype>(k)];
        namn.chop(namn.endsWith(QLatin1Char(':')) ? 1 : 0);
        if (!varde.isEmpty())
            text += QStringLiteral(", ") + namn.trimmed().toLower() + QLatin1Char(' ') + varde;
    }
    return text;
}

// Entry `index` of game `spelNr`'s table as its row, read out under the words of `rubrik`.
QListWidgetItem* HiscoreItem(int index, const HighScoreTable& post, int spelNr,
                             const char* rubrik) {
    QString rad = QString::fromUtf8(HiscoreRad(index, post, spelNr));
    auto* item = new QListWidgetItem(rad);
    item->setData(Qt::AccessibleTextRole,
                  RadIOrd(index, rad, QString::fromLatin1(rubrik), HiscoreKolumner(spelNr)));
    return item;
}

// On one line the words `ord` (anchors `a`, widths `b`, in order) keep `mellanrum` apart;
// the smallest largest shift from their anchors that allows it, and the places.
qreal PlaceraPaRad(const std::vector<size_t>& ord, const std::vector<qreal>& a,
                   const std::vector<qreal>& b, qreal mellanrum, std::vector<qreal>& x) {
    qreal skift = 0;
    for (size_t i = 0; i < ord.size(); ++i) {
        qreal langd = 0;
        for (size_t j = i + 1; j < ord.size(); ++j) {
            langd += b[ord[j - 1]] + mellanrum;
            skift = std::max(skift, (langd - (a[ord[j]] - a[ord[i]])) / 2);
        }
    }
    // As far left as the shift allows, then each as near its anchor as its right
    // neighbour lets it be.
    qreal slut = -std::numeric_limits<qreal>::infinity();
    for (size_t k : ord) {
        x[k] = std::max(a[k] - skift, slut);
        slut = x[k] + b[k] + mellanrum;
    }
    for (size_t i = ord.size(); i-- > 0;) {
        size_t k = ord[i];
        qreal hoger = i + 1 < ord.size() ? x[ord[i + 1]] - mellanrum - b[k]
                                         : std::numeric_limits<qreal>::infinity();
        x[k] = std::max(x[k], std::min(a[k], hoger));
    }
    return skift;
}

void Farga(QWidget* w, QColor farg) {
    QPalette p = w->palette();
    p.setColor(QPalette::Window, farg);
    w->setPalette(p);
    w->setAutoFillBackground(true);
}

bool LasTabell(AttributeStore& store, const std::string& namn, HiscoreLista& tabell) {
    if (store.InitCheck() != B_OK)
        return false;
    ssize_t last = store.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
    if (last == static_cast<ssize_t>(sizeof tabell))
        return true;
    // Something else stored under the table's name is the player's to know of: it is kept
    // aside, not overwritten, when the next result comes.
    type_code typ = 0;
    size_t storlek = 0;
    if (store.StatAttr(namn.c_str(), &typ, &storlek))
        Notify("the stored hiscore table " + namn + " cannot be read as 40 entries (" +
               std::to_string(storlek) +
               " bytes); it will be kept aside, not overwritten, when the next result is "
               "recorded.");
    return false;
}

} // namespace

// Any button chooses, as the left one does.
void RadLista::mousePressEvent(QMouseEvent* event) {
    MouseDown(event->position().toPoint());
}

void RadLista::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

// The press did all a click does: dragging over the rows with the button down chooses
// none of them.
void RadLista::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() != Qt::NoButton) {
        event->accept();
        return;
    }
    QListWidget::mouseMoveEvent(event);
}

SpelOLLView::SpelOLLView(QWidget* parent, WelcomeView* valkomstVy)
    : RadLista(parent), valkomst(valkomstVy) {}

void SpelOLLView::MouseDown(QPoint where) {
    QListWidgetItem* item = itemAt(where);
    if (item == nullptr)
        return;
    int rad = row(item);
    valkomst->spelarFalt->clearFocus();
    if (currentRow() != rad || !item->isSelected()) {
        setCurrentRow(rad);
        valkomst->hiscoreLista->VisaHiscoreLista(rad);
    } else {
        valkomst->Posta(kStartaSpel0 + static_cast<type_code>(rad));
    }
}

void SpelOLLView::keyPressEvent(QKeyEvent* event) {
    QListWidgetItem* vald = currentItem();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (vald != nullptr && vald->isSelected())
            valkomst->Posta(kStartaSpel0 + static_cast<type_code>(row(vald)));
        event->accept();
        return;
    }
    const int fore = currentRow();
    const bool valdFore = vald != nullptr && vald->isSelected();
    RadLista::keyPressEvent(event);
    QListWidgetItem* nu = currentItem();
    if (nu == nullptr || (currentRow() == fore && valdFore))
        return;
    nu->setSelected(true);
    valkomst->hiscoreLista->VisaHiscoreLista(currentRow());
}

HighOLLView::HighOLLView(QWidget* parent, WelcomeView* valkomstVy)
    : RadLista(parent), valkomst(valkomstVy) {
    setObjectName(QStringLiteral("Highoutlinelistview"));
    setSelectionMode(QAbstractItemView::SingleSelection);
}

void HighOLLView::VisaHiscoreLista(int spelNr) {
    valkomst->visatSpel = spelNr;
    valkomst->VisaStatistik();
    valkomst->titelRad->setText(
        QStringLiteral("Highscore for %1").arg(QString::fromUtf8(SpelNamn(spelNr))));
    attributNamn = HiscoreAttributNamn(spelNr);
    bool last = LasTabell(valkomst->store, attributNamn, tabell);
    clear();
    valkomst->hiscoreRader.fill(nullptr);
    if (!last) {
        valkomst->rubrikRad->VisaRubrik(QString::fromLatin1(kIngenTabell), {});
        return;
    }
    valkomst->rubrikRad->VisaRubrik(QString::fromLatin1(HiscoreRubrik(spelNr)),
                                    HiscoreKolumner(spelNr));
    for (int i = 0; i < kHiscorePlatser; ++i) {
        auto* item = HiscoreItem(i, tabell[i], spelNr, HiscoreRubrik(spelNr));
        valkomst->hiscoreRader[i] = item;
        insertItem(i, item);
    }
}

void HighOLLView::MouseDown(QPoint where) {
    QListWidgetItem* item = itemAt(where);
    if (item == nullptr)
        return;
    int rad = row(item);
    setCurrentRow(rad);
    if (!LasTabell(valkomst->store, attributNamn, tabell))
        return;
    valkomst->spelarFalt->clearFocus();
    valkomst->spelarFalt->setText(
        QString::fromStdString(RentNamn(tabell[rad].namn, sizeof tabell[rad].namn)));
    valkomst->spelarFalt->setCursorPosition(0);
}

qreal HighOLLView::KolumnX(int kolumn) const {
    return contentsRect().left() + kRadMarginal +
           QFontMetricsF(font()).horizontalAdvance(QString(kolumn, QLatin1Char(' ')));
}

qreal HighOLLView::Teckenbredd() const {
    return QFontMetricsF(font()).horizontalAdvance(QLatin1Char(' '));
}

RubrikRad::RubrikRad(const QString& text, QWidget* parent, const HighOLLView* hiscoreLista)
    : QLabel(text, parent), lista(hiscoreLista) {
    setAlignment(Qt::AlignLeft | Qt::AlignBottom);
}

void RubrikRad::VisaRubrik(const QString& text, std::vector<int> kolumnerna) {
    kolumner = std::move(kolumnerna);
    setText(text);
    update();
}

std::vector<RubrikRad::Ord> RubrikRad::Placera(const QString& text,
                                               const std::vector<int>& kolumnerna,
                                               const QFont& font, qreal* storstaSkift) const {
    QStringList ord = RubrikensOrd(text);
    if (kolumnerna.empty() || static_cast<size_t>(ord.size()) != kolumnerna.size())
        return {};
    QFontMetricsF fm(font);
    const size_t n = kolumnerna.size();
    std::vector<qreal> a(n);
    std::vector<qreal> b(n);
    for (size_t i = 0; i < n; ++i) {
        a[i] = lista->x() + lista->KolumnX(kolumnerna[i]) - x();
        b[i] = fm.horizontalAdvance(ord[static_cast<qsizetype>(i)]);
    }
    const qreal mellanrum = fm.horizontalAdvance(QLatin1Char(' '));
    const int rader = std::clamp(static_cast<int>(height() / fm.lineSpacing()), 1, 2);

    // Every way of sharing the words among the lines: the one whose largest shift is
    // smallest, then with the fewest words above the lowest line, then the least shifted.
    std::vector<int> basta(n, 0);
    std::vector<qreal> bastaX(n);
    qreal bastaSkift = std::numeric_limits<qreal>::infinity();
    int bastaOvan = 0;
    qreal bastaSumma = 0;
    size_t antal = 1;
    for (size_t i = 0; i < n; ++i)
        antal *= static_cast<size_t>(rader);
    for (size_t val = 0; val < antal; ++val) {
        std::vector<int> rad(n);
        size_t v = val;
        int ovan = 0;
        for (size_t i = 0; i < n; ++i) {
            rad[i] = static_cast<int>(v % static_cast<size_t>(rader));
            v /= static_cast<size_t>(rader);
            ovan += rad[i] > 0 ? 1 : 0;
        }
        std::vector<qreal> xs(n);
        qreal skift = 0;
        for (int r = 0; r < rader; ++r) {
            std::vector<size_t> paRaden;
            for (size_t i = 0; i < n; ++i)
                if (rad[i] == r)
                    paRaden.push_back(i);
            skift = std::max(skift, PlaceraPaRad(paRaden, a, b, mellanrum, xs));
        }
        qreal summa = 0;
        for (size_t i = 0; i < n; ++i)
            summa += std::abs(xs[i] - a[i]);
        if (std::tie(skift, ovan, summa) < std::tie(bastaSkift, bastaOvan, bastaSumma)) {
            bastaSkift = skift;
            bastaOvan = ovan;
            bastaSumma = summa;
            basta = rad;
            bastaX = xs;
        }
    }

    std::vector<Ord> placerade;
    for (size_t i = 0; i < n; ++i) {
        qreal bas = height() - 1 - fm.descent() - basta[i] * fm.lineSpacing();
        placerade.push_back(
            {ord[static_cast<qsizetype>(i)],
             QRectF(bastaX[i], bas - fm.ascent(), b[i], fm.ascent() + fm.descent())});
    }
    if (storstaSkift != nullptr)
        *storstaSkift = bastaSkift;
    return placerade;
}

std::vector<RubrikRad::Ord> RubrikRad::OrdRutor() const {
    return Placera(text(), kolumner, font(), nullptr);
}

void RubrikRad::PassaFont(const std::vector<std::pair<QString, std::vector<int>>>& rubriker,
                          int storst, qreal maxSkift) {
    QFont prov = font();
    int storlek = storst;
    for (; storlek > kMinstaStorlek; --storlek) {
        prov.setPixelSize(storlek);
        bool passar = true;
        for (const auto& [text, kolumnerna] : rubriker) {
            qreal skift = 0;
            std::vector<Ord> ord = Placera(text, kolumnerna, prov, &skift);
            passar = passar && skift <= maxSkift && !ord.empty() &&
                     ord.back().ruta.right() <= width() && ord.front().ruta.left() >= 0;
            for (const Ord& o : ord)
                passar = passar && o.ruta.top() >= 0 && o.ruta.right() <= width();
        }
        if (passar)
            break;
    }
    SattStorlek(this, storlek);
}

void RubrikRad::paintEvent(QPaintEvent* event) {
    std::vector<Ord> ord = OrdRutor();
    if (ord.empty()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter p(this);
    p.setFont(font());
    p.setPen(palette().color(foregroundRole()));
    QFontMetricsF fm(font());
    for (const Ord& o : ord)
        p.drawText(QPointF(o.ruta.left(), o.ruta.top() + fm.ascent()), o.text);
}

WelcomeView::WelcomeView(QWidget* parent, AttributeStore& attributStore)
    : QWidget(parent), store(attributStore) {
    setObjectName(QStringLiteral("WelcomeView"));
    Farga(this, QColor(0, 160, 0));
    QFont stor = font();
    stor.setPixelSize(34);
    setFont(stor);

    // The controls keep the frames they have always had. The tab view's font at 12 is
    // their texts' font wherever it fits; where our font is wider than the one the frames
    // were measured for, a control takes the font's narrower face at the largest size at
    // which its text shows whole.
    flikar = new QTabWidget(this);
    flikar->setObjectName(QStringLiteral("tab_view"));
    QFont flikFont = flikar->font();
    flikFont.setPixelSize(12);
    flikar->setFont(flikFont);
    Farga(flikar, QColor(216, 216, 216));

    spelFlik = new QWidget;
    spelFlik->setObjectName(QStringLiteral("SpelView"));
    Farga(spelFlik, QColor(160, 160, 0));
    flikar->addTab(spelFlik, QStringLiteral("Choose a game"));

    hjalpRad = new QLabel(QStringLiteral("Enter a name or click in the hiscoretable"), spelFlik);
    hjalpRad->setObjectName(QStringLiteral("StringView"));
    hjalpRad->setGeometry(Ram(10, 10, 210, 30));

    titelRad = new QLabel(QStringLiteral("Highscore for Idioten 1"), spelFlik);
    titelRad->setObjectName(QStringLiteral("hititleview"));
    QFont titelFont = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    titelFont.setBold(true);
    titelFont.setPixelSize(16);
    titelRad->setFont(titelFont);
    titelRad->setGeometry(Ram(300, 20, 600, 40));
    QStringList titlar;
    for (int spel = 0; spel < kAntalSpel; ++spel)
        titlar << QStringLiteral("Highscore for %1").arg(QString::fromUtf8(SpelNamn(spel)));
    titelRad->setFont(PassandeFont(titelFont, titlar, titelRad->width(), 16));

    auto* spelarEtikett = new QLabel(QStringLiteral("Player = "), spelFlik);
    spelarEtikett->setGeometry(Ram(10, 40, 59, 60));
    spelarEtikett->setFont(
        PassandeFont(flikFont, {spelarEtikett->text()}, spelarEtikett->width(), 12));
    spelarFalt = new NamnFalt(QStringLiteral("Guest"), spelFlik);
    spelarFalt->setObjectName(QStringLiteral("textcontrol"));
    spelarFalt->setGeometry(Ram(60, 40, 170, 60));

    valjRad = new QLabel(QStringLiteral("Choose a game to play"), spelFlik);
    valjRad->setObjectName(QStringLiteral("StringView"));
    valjRad->setGeometry(Ram(10, 70, 210, 90));
    // The two lines of help read as one voice: one size for both.
    QFont hjalpFont =
        PassandeFont(flikFont, {hjalpRad->text(), valjRad->text()}, hjalpRad->width(), 12);
    hjalpRad->setFont(hjalpFont);
    valjRad->setFont(hjalpFont);

    hiscoreLista = new HighOLLView(spelFlik, this);
    hiscoreLista->setFont(FastBredd(12));
    hiscoreLista->setItemDelegate(new RadRitare(hiscoreLista));
    hiscoreLista->setGeometry(Ram(200, 65, 570, 300));
    hiscoreLista->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    hiscoreLista->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);

    // The headings need two lines (see RubrikRad): their frame reaches up from the list
    // to the title's.
    rubrikRad = new RubrikRad(QString::fromLatin1(kRubrikStart), spelFlik, hiscoreLista);
    rubrikRad->setObjectName(QStringLiteral("hiinfoview"));
    rubrikRad->setFont(Smal(flikFont));
    rubrikRad->setGeometry(Ram(200, 41, 600, 63));
    std::vector<std::pair<QString, std::vector<int>>> rubriker = {
        {QString::fromLatin1(kRubrikStart), HiscoreKolumner(0)}};
    for (int spel = 0; spel < 12; ++spel)
        rubriker.emplace_back(QString::fromLatin1(HiscoreRubrik(spel)), HiscoreKolumner(spel));
    // A word may stand off its column by less than a character, never by a whole one.
    rubrikRad->PassaFont(rubriker, 12, hiscoreLista->Teckenbredd() - 1);
    rubrikRad->VisaRubrik(QString::fromLatin1(kRubrikStart), HiscoreKolumner(0));

    spelLista = new SpelOLLView(spelFlik, this);
    spelLista->setGeometry(Ram(10, 100, 170, 300));
    spelLista->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    spelLista->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    for (int i = 0; i < 12; ++i) {
        spelRader[i] = new QListWidgetItem(QString::fromUtf8(SpelNamn(i)));
        spelLista->addItem(spelRader[i]);
    }
    // All twelve games in view at once: size 14, or the largest below it at which they fit.
    int listStorlek = 14;
    for (; listStorlek > kMinstaStorlek; --listStorlek) {
        SattStorlek(spelLista, listStorlek);
        if (12 * spelLista->sizeHintForRow(0) <= spelLista->contentsRect().height())
            break;
    }
    SattStorlek(spelLista, listStorlek);

    optionFlik = new QWidget;
    optionFlik->setObjectName(QStringLiteral("OptionView"));
    Farga(optionFlik, QColor(0, 160, 160));
    flikar->addTab(optionFlik, QStringLiteral("Options"));

    animeringsRuta = new QCheckBox(QStringLiteral("Animation"), optionFlik);
    animeringsRuta->setObjectName(QStringLiteral("checkbox"));
    animeringsRuta->setGeometry(Ram(49, 110, 115, 132));
    animeringsRuta->setFont(PassandeFont(flikFont, {animeringsRuta->text()},
                                         Textrum(animeringsRuta, QStyle::SE_CheckBoxContents), 12));
    connect(animeringsRuta, &QCheckBox::toggled, this, [this] { Posta(kAnimering); });

    auto knapp = [this](const char* namn, const char* text, BRect ram, type_code what) {
        auto* b = new QPushButton(QString::fromUtf8(text), optionFlik);
        b->setObjectName(QString::fromUtf8(namn));
        b->setGeometry(ToQRect(ram));
        connect(b, &QPushButton::clicked, this, [this, what] { Posta(what); });
        return b;
    };
    oppnaKnapp = knapp("openbutton", "Choose Background", BRect(200, 50, 300, 100), kValjBakgrund);
    rensaKnapp =
        knapp("clearbutton", "Clear Background", BRect(200, 150, 300, 200), kRensaBakgrund);
    aterstallKnapp =
        knapp("resetallbutton", "Reset to default", BRect(200, 250, 300, 300), kAterstall);
    // One font for the three buttons, with a little air on either side of the longest text.
    QFont knappFont =
        PassandeFont(flikFont, {oppnaKnapp->text(), rensaKnapp->text(), aterstallKnapp->text()},
                     Textrum(oppnaKnapp, QStyle::SE_PushButtonContents) - 4, 12);
    for (QPushButton* b : {oppnaKnapp, rensaKnapp, aterstallKnapp})
        b->setFont(knappFont);

    // In the margin under the tabs, where no control has ever been: the player's record in
    // the game whose table is shown.
    statistikRad = new QLabel(this);
    statistikRad->setObjectName(QStringLiteral("statisticsview"));
    Farga(statistikRad, QColor(0, 160, 0));
    QPalette vit = statistikRad->palette();
    vit.setColor(QPalette::WindowText, Qt::white);
    statistikRad->setPalette(vit);
    statistikRad->setFont(flikFont);
    // Read as it shows; what it is, is its description.
    statistikRad->setAccessibleDescription(
        QStringLiteral("Your record in the game whose hiscores are shown"));
    connect(spelarFalt, &QLineEdit::textChanged, this, [this] { VisaStatistik(); });
    VisaStatistik();

    // Game 0's table at start; until a game is chosen the heading keeps its first words.
    HiscoreLista tabell;
    if (LasTabell(store, HiscoreAttributNamn(0), tabell)) {
        for (int i = 0; i < kHiscorePlatser; ++i) {
            hiscoreRader[i] = HiscoreItem(i, tabell[i], 0, kRubrikStart);
            hiscoreLista->addItem(hiscoreRader[i]);
        }
    } else {
        rubrikRad->VisaRubrik(QString::fromLatin1(kIngenTabell), {});
    }
    GeTillganglighet();
}

// Names and descriptions a screen reader reads, and the order Tab goes in: the name, the
// games, the chosen game's hiscores, then the options.
void WelcomeView::GeTillganglighet() {
    spelarFalt->setAccessibleName(QStringLiteral("Player name"));
    spelarFalt->setAccessibleDescription(
        QStringLiteral("The name your results are entered under in the hiscore tables"));
    spelLista->setAccessibleName(QStringLiteral("Games"));
    spelLista->setAccessibleDescription(
        QStringLiteral("Choose a game to see its hiscores; Enter or a second click starts it"));
    hiscoreLista->setAccessibleName(QStringLiteral("Hiscore table"));
    hiscoreLista->setAccessibleDescription(
        QStringLiteral("The 40 best results of the chosen game, one a row, best first"));
    animeringsRuta->setAccessibleDescription(QStringLiteral("Cards fly when they move"));
    oppnaKnapp->setAccessibleDescription(QStringLiteral("A picture to lay under the cards"));
    rensaKnapp->setAccessibleDescription(QStringLiteral("The plain green table again"));
    aterstallKnapp->setAccessibleDescription(
        QStringLiteral("The plain table, animation on, and the first windows' places forgotten"));
    QWidget* forra = spelarFalt;
    for (QWidget* nasta : std::initializer_list<QWidget*>{spelLista, hiscoreLista, animeringsRuta,
                                                          oppnaKnapp, rensaKnapp, aterstallKnapp}) {
        QWidget::setTabOrder(forra, nasta);
        forra = nasta;
    }
}

std::string KortaUtf8(const QString& text, size_t max) {
    QByteArray bytes = text.toUtf8();
    size_t n = std::min(static_cast<size_t>(bytes.size()), max);
    while (n > 0 && n < static_cast<size_t>(bytes.size()) &&
           (static_cast<unsigned char>(bytes[static_cast<int>(n)]) & 0xC0) == 0x80)
        --n;
    return std::string(bytes.constData(), n);
}

QString StatistikRadText(AttributeStore& store, int spelNr, const std::string& spelare) {
    if (store.InitCheck() != B_OK)
        return {};
    StatisticsRow rad{spelNr, spelare};
    status_t status = store.ReadStatistics(spelNr, spelare, &rad);
    if (status == B_BAD_VALUE) {
        Notify("the stored statistics in " + store.DatabasePath() +
               " cannot be read; they will be kept aside and started afresh when the next "
               "result is recorded.");
        return QStringLiteral("The statistics cannot be read; they start afresh with the next "
                              "result.");
    }
    if (status != B_OK && status != B_ENTRY_NOT_FOUND)
        return {};
    return QString::fromStdString(StatistikText(rad));
}

void WelcomeView::VisaStatistik() {
    QString text = StatistikRadText(
        store, visatSpel, KortaUtf8(spelarFalt->text(), sizeof(HighScoreTable::namn) - 1));
    statistikRad->setFont(PassandeFont(statistikRad->font(), {text},
                                       statistikRad->contentsRect().width(), kStatistikStorlek));
    statistikRad->setText(text);
}

void WelcomeView::resizeEvent(QResizeEvent*) {
    flikar->setGeometry(rect().adjusted(20, 20, -20, -20));
    statistikRad->setGeometry(20, height() - 19, width() - 40, 18);
    VisaStatistik();
}

void WelcomeView::SetViewBitmap(const QImage& bild) {
    bakgrund = bild;
    setAutoFillBackground(bild.isNull());
    update();
}

void WelcomeView::Posta(uint32_t what) {
    QCoreApplication::postEvent(window(), new Meddelande(what));
}

void WelcomeView::paintEvent(QPaintEvent*) {
    if (bakgrund.isNull())
        return;
    QPainter p(this);
    p.drawTiledPixmap(rect(), QPixmap::fromImage(bakgrund));
}

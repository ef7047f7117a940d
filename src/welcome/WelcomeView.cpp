#include "welcome/WelcomeView.h"

#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/Meddelande.h"
#include "platform/QtGeometry.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

QRect Ram(float l, float t, float r, float b) {
    return ToQRect(BRect(l, t, r, b));
}

QFont FastBredd(int storlek) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (!QFontInfo(font).fixedPitch()) {
        font = QFont(QStringLiteral("DejaVu Sans Mono"));
        font.setStyleHint(QFont::Monospace);
        font.setFixedPitch(true);
    }
    font.setPixelSize(storlek);
    return font;
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
    return last == static_cast<ssize_t>(sizeof tabell);
}

} // namespace

void RadLista::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        MouseDown(event->position().toPoint());
}

void RadLista::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
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

HighOLLView::HighOLLView(QWidget* parent, WelcomeView* valkomstVy)
    : RadLista(parent), valkomst(valkomstVy) {
    setObjectName(QStringLiteral("Highoutlinelistview"));
    setSelectionMode(QAbstractItemView::SingleSelection);
}

void HighOLLView::VisaHiscoreLista(int spelNr) {
    valkomst->titelRad->setText(
        QStringLiteral("Highscore for %1").arg(QString::fromUtf8(SpelNamn(spelNr))));
    attributNamn = HiscoreAttributNamn(spelNr);
    bool last = LasTabell(valkomst->store, attributNamn, tabell);
    clear();
    valkomst->hiscoreRader.fill(nullptr);
    if (!last) {
        valkomst->rubrikRad->setText(QString::fromLatin1(kIngenTabell));
        return;
    }
    valkomst->rubrikRad->setText(QString::fromLatin1(HiscoreRubrik(spelNr)));
    for (int i = 0; i < kHiscorePlatser; ++i) {
        auto* item = new QListWidgetItem(QString::fromUtf8(HiscoreRad(i, tabell[i], spelNr)));
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
    const char* namn = tabell[rad].namn;
    valkomst->spelarFalt->setText(
        QString::fromUtf8(namn, static_cast<int>(strnlen(namn, sizeof tabell[rad].namn))));
    valkomst->spelarFalt->clearFocus();
}

WelcomeView::WelcomeView(QWidget* parent, AttributeStore& attributStore)
    : QWidget(parent), store(attributStore) {
    setObjectName(QStringLiteral("WelcomeView"));
    Farga(this, QColor(0, 160, 0));
    QFont stor = font();
    stor.setPixelSize(34);
    setFont(stor);

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
    // Our font is wider than the one the line was measured for: let it run on rather
    // than cut it.
    hjalpRad->resize(std::max(hjalpRad->width(), hjalpRad->sizeHint().width()), hjalpRad->height());

    titelRad = new QLabel(QStringLiteral("Highscore for Idioten 1"), spelFlik);
    titelRad->setObjectName(QStringLiteral("hititleview"));
    QFont titelFont = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    titelFont.setBold(true);
    titelFont.setPixelSize(16);
    titelRad->setFont(titelFont);
    titelRad->setGeometry(Ram(300, 20, 600, 40));

    rubrikRad = new QLabel(QString::fromLatin1(kRubrikStart), spelFlik);
    rubrikRad->setObjectName(QStringLiteral("hiinfoview"));
    // The headings are in the plain, proportional font: spelt with their blanks, they
    // then stand over the columns of the fixed-width rows below.
    QFont rubrikFont = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    rubrikFont.setPixelSize(10);
    rubrikRad->setFont(rubrikFont);
    rubrikRad->setGeometry(Ram(200, 50, 600, 63));

    auto* spelarEtikett = new QLabel(QStringLiteral("Player = "), spelFlik);
    spelarEtikett->setGeometry(Ram(10, 40, 59, 60));
    spelarFalt = new QLineEdit(QStringLiteral("Guest"), spelFlik);
    spelarFalt->setObjectName(QStringLiteral("textcontrol"));
    spelarFalt->setGeometry(Ram(60, 40, 170, 60));

    valjRad = new QLabel(QStringLiteral("Choose a game to play"), spelFlik);
    valjRad->setObjectName(QStringLiteral("StringView"));
    valjRad->setGeometry(Ram(10, 70, 210, 90));

    hiscoreLista = new HighOLLView(spelFlik, this);
    hiscoreLista->setFont(FastBredd(11));
    hiscoreLista->setTextElideMode(Qt::ElideNone);
    hiscoreLista->setGeometry(Ram(200, 65, 570, 300));
    hiscoreLista->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    hiscoreLista->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);

    spelLista = new SpelOLLView(spelFlik, this);
    QFont listFont = spelLista->font();
    listFont.setPixelSize(14);
    spelLista->setFont(listFont);
    spelLista->setGeometry(Ram(10, 100, 170, 300));
    spelLista->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    spelLista->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    for (int i = 0; i < 12; ++i) {
        spelRader[i] = new QListWidgetItem(QString::fromUtf8(SpelNamn(i)));
        spelLista->addItem(spelRader[i]);
    }

    optionFlik = new QWidget;
    optionFlik->setObjectName(QStringLiteral("OptionView"));
    Farga(optionFlik, QColor(0, 160, 160));
    flikar->addTab(optionFlik, QStringLiteral("Options"));

    animeringsRuta = new QCheckBox(QStringLiteral("Animation"), optionFlik);
    animeringsRuta->setObjectName(QStringLiteral("checkbox"));
    animeringsRuta->setGeometry(Ram(49, 110, 115, 132));
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

    // Game 0's table at start; until a game is chosen the heading keeps its first words.
    HiscoreLista tabell;
    if (LasTabell(store, HiscoreAttributNamn(0), tabell)) {
        for (int i = 0; i < kHiscorePlatser; ++i) {
            hiscoreRader[i] = new QListWidgetItem(QString::fromUtf8(HiscoreRad(i, tabell[i], 0)));
            hiscoreLista->addItem(hiscoreRader[i]);
        }
    } else {
        rubrikRad->setText(QString::fromLatin1(kIngenTabell));
    }
}

void WelcomeView::resizeEvent(QResizeEvent*) {
    flikar->setGeometry(rect().adjusted(20, 20, -20, -20));
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

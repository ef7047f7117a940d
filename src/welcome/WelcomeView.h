#pragma once

#include "cards/Hiscore.h"
#include "cards/HiscoreRader.h"

#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QWidget>

#include <array>
#include <string>
#include <utility>
#include <vector>

class AttributeStore;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QTabWidget;
class WelcomeView;

// A list whose rows answer a press themselves, whatever Qt's own selection would do; the
// second press of a double click is a press like any other.
class RadLista : public QListWidget {
public:
    using QListWidget::QListWidget;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    virtual void MouseDown(QPoint where) = 0;
};

// The list of the twelve games: the first click on a row chooses it and shows its
// hiscore table, a click on the chosen row starts it. The keys do the same: a row reached
// with them is chosen, and Enter starts the chosen row.
class SpelOLLView : public RadLista {
public:
    SpelOLLView(QWidget* parent, WelcomeView* valkomst);

protected:
    void MouseDown(QPoint where) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    WelcomeView* valkomst;
};

// One game's hiscore table as 40 rows of fixed-width text; a click on a row takes its
// name as the player's name.
class HighOLLView : public RadLista {
public:
    HighOLLView(QWidget* parent, WelcomeView* valkomst);

    void VisaHiscoreLista(int spelNr);
    const std::string& AttributNamn() const { return attributNamn; }

    // Where the character at `kolumn` of a row begins, in the list's own coordinates.
    qreal KolumnX(int kolumn) const;
    // The width of one character of the rows.
    qreal Teckenbredd() const;

protected:
    void MouseDown(QPoint where) override;

private:
    WelcomeView* valkomst;
    HiscoreLista tabell;
    std::string attributNamn = "FJOLK:Spel0";
};

// The column headings over the hiscore list. Its text is the heading as the program has
// always spelt it, blanks and all; each of the heading's words (up to and including its
// colon) is drawn with its left edge over the column of the list where its field begins.
// The words are wider than their columns lie apart, so they are staggered on as many
// lines as the label's height holds, the lowest line first.
class RubrikRad : public QLabel {
public:
    RubrikRad(const QString& text, QWidget* parent, const HighOLLView* lista);

    // Shows `text` over the list; with one column for each of its words, word by word,
    // else as one line.
    void VisaRubrik(const QString& text, std::vector<int> kolumner);

    struct Ord {
        QString text;
        QRectF ruta;
    };
    // Where each word is drawn, in the label's coordinates; empty when the text is one line.
    std::vector<Ord> OrdRutor() const;

    // Chooses the largest pixel size, from `storst` down, at which every one of `rubriker`
    // stands over its columns, no word more than `maxSkift` pixels from its column.
    void PassaFont(const std::vector<std::pair<QString, std::vector<int>>>& rubriker, int storst,
                   qreal maxSkift);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<Ord> Placera(const QString& text, const std::vector<int>& kolumnerna,
                             const QFont& font, qreal* storstaSkift) const;

    const HighOLLView* lista;
    std::vector<int> kolumner;
};

// A UTF-8 text cut to at most `max` bytes without splitting a character: the player's name
// as results store it.
std::string KortaUtf8(const QString& text, size_t max);

// The statistics line of `spelNr` for the player named `spelare`, as the welcome screen
// shows it; empty when the store has none to show.
QString StatistikRadText(AttributeStore& store, int spelNr, const std::string& spelare);

// What the window shows while no game is played: the player's name, the game list with
// the chosen game's hiscore table, and the options. Every choice is posted to the window
// as a command.
class WelcomeView : public QWidget {
public:
    explicit WelcomeView(QWidget* parent, AttributeStore& store);

    // The background picture, tiled; a null picture shows the table green.
    void SetViewBitmap(const QImage& bild);

    // Posts a command to the window that holds this view.
    void Posta(uint32_t what);

    AttributeStore& store;

    QLabel* titelRad = nullptr;
    RubrikRad* rubrikRad = nullptr;
    QLabel* hjalpRad = nullptr;
    QLabel* valjRad = nullptr;
    QLineEdit* spelarFalt = nullptr;
    QWidget* spelFlik = nullptr;
    QWidget* optionFlik = nullptr;
    QTabWidget* flikar = nullptr;
    HighOLLView* hiscoreLista = nullptr;
    std::array<QListWidgetItem*, 40> hiscoreRader{};
    SpelOLLView* spelLista = nullptr;
    std::array<QListWidgetItem*, 12> spelRader{};
    QCheckBox* animeringsRuta = nullptr;
    QPushButton* oppnaKnapp = nullptr;
    QPushButton* rensaKnapp = nullptr;
    QPushButton* aterstallKnapp = nullptr;
    // The player's record in the game whose table is shown.
    QLabel* statistikRad = nullptr;

    // Shows the statistics of the game whose table is shown, for the player named now.
    void VisaStatistik();
    int VisatSpel() const { return visatSpel; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class HighOLLView;
    QImage bakgrund;
    int visatSpel = 0;

    void GeTillganglighet();
};

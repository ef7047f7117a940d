#pragma once

#include "app/LosKommando.h"
#include "app/LosarTrad.h"
#include "solver/Losare.h"

#include <QObject>
#include <QTimer>
#include <QWidget>

#include <array>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class AttributeStore;
class FjolkView;
class Patiens;
class QAction;
class QCheckBox;
class QMenu;
class WelcomeView;

// A quiet line over the table, and the cards a hint names outlined for a moment. It takes
// no input: the table under it plays on, and its box lies where it hides no card or button
// when the table leaves room for it anywhere.
class Bordsnotis : public QWidget {
public:
    explicit Bordsnotis(FjolkView* vy);

    // Shows `text` and `ramar` (view units) for `ms` milliseconds; 0: until the next one.
    // `beratta`: a screen reader is told it too.
    void Visa(const QString& text, std::vector<QRect> ramar = {}, int ms = 0, bool beratta = true);
    void Rensa();
    const QString& Text() const { return text; }
    const std::vector<QRect>& Ramar() const { return ramar; }
    // Where the text's box lies in the view; empty while there is no text.
    QRect Ruta() const { return ruta; }
    static QFont Font(int pixlar);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* mal, QEvent* event) override;

private:
    void Placera();
    // What the box must not hide: the cards on the table, its buttons and a hint's outlines.
    std::vector<QRect> Hinder() const;

    // The type sizes the text is set in, the first where the table leaves room.
    static constexpr std::array<int, 3> kPixlar{15, 13, 11};

    FjolkView* vy;
    QString text;
    std::vector<QRect> ramar;
    QRect ruta;
    int pixlar = kPixlar.front();
    QTimer klocka;
};

// The solver in the player's hands: Hint, Finish and "Can This Deal Be Won?" in the Game
// menu, and the options Winnable Deals Only, Finish by Itself and Tell Me When the Deal Is
// Lost. Every search runs on the solver's thread; the window never waits for one.
class Spelhjalp : public QObject {
public:
    Spelhjalp(QWidget* fonster, FjolkView* vy, WelcomeView* valkomst, AttributeStore& store,
              QMenu* spelMeny);
    ~Spelhjalp() override;

    QAction* tipsItem = nullptr;
    QAction* slutforItem = nullptr;
    QAction* fragaItem = nullptr;
    QCheckBox* vinnbaraRuta = nullptr;
    QCheckBox* sjalvRuta = nullptr;
    QCheckBox* forlorasRuta = nullptr;
    Bordsnotis* notis = nullptr;

    void Tips();
    void Slutfor();
    void KanVinnas();
    // The table may have changed: a move, an undo, a new deal.
    void EfterDrag();
    // The game is closed or the program quits: every search ends.
    void SpeletSlut();
    // "Reset to default": the options off and forgotten.
    void Aterstall();
    // --winnable-only: the option on for this run, not stored.
    void BaraVinnbaraForKorningen();
    bool BaraVinnbara() const;
    // Winnable Deals Only: tries game `spel`'s deals on the solver's thread, then seeds the
    // random numbers with the one to play and calls `dela`, which deals it.
    void SokVinnbarGiv(int spel, std::function<void(unsigned)> dela);
    void MenusBeginning();
    bool Soker() const { return vantar != Fraga::Ingen; }
    // Winnable Deals Only is looking for the next deal: the game on the table, if any, has
    // had its result recorded and is about to go.
    bool SokerGiv() const { return givSok.has_value(); }
    bool Slutfors() const { return !slutDrag.empty(); }
    LosarTrad& Trad() { return trad; }
    // The move the last hint named, while it is shown.
    const std::optional<Drag>& SenasteTips() const { return senasteTips; }
    // The verdict on the table as it is now, when known.
    std::optional<Utfall> Utfallet() const { return senasteUtfall; }

    // How long a hint, a finish or a question searches at most.
    static SokGranser SpelarGranser();

protected:
    bool eventFilter(QObject* mal, QEvent* event) override;

private:
    enum class Fraga { Ingen, Tips, Slutfor, KanVinnas, Koll, Giv, SlutforSynligt };
    void Besvara(int id, const SokSvar& svar);
    void Stall(Fraga fraga, SokGranser granser = SpelarGranser());
    bool KandHar(const SpelBord& bord) const;
    void VisaTips();
    void VisaGissning(const QString& forklaring);
    void VisaSvar();
    void BorjaSlutfora(std::vector<Drag> dragen);
    void NastaSlutDrag();
    void SlutaSlutfora();
    // The finish's next move cannot be made in the window: asks for a way on from here that
    // uses only moves the window shows, unless that was asked for this table and view already.
    bool SokSynligVag(const QString& stopp);
    void SvarSynligVag(const SokSvar& svar);
    void ProvaNastaGiv();
    std::optional<std::vector<Drag>> HemDrag() const;
    std::vector<QRect> Ramar(const Drag& drag) const;
    QString DragText(const SpelBord& fore, const Drag& drag) const;
    void Spara(const char* namn, bool pa);

    FjolkView* vy;
    WelcomeView* valkomst;
    AttributeStore& store;
    LosarTrad trad;
    Fraga vantar = Fraga::Ingen;
    int serie = 0;
    // The table the search under way was asked about.
    std::unique_ptr<SpelBord> fragat;

    // The verdict on the table it was searched for, moved along its moves as they are made.
    std::unique_ptr<SpelBord> kandBord;
    SokSvar kand;
    // The table last seen and its verdict when known, for telling when a deal is lost.
    std::unique_ptr<SpelBord> senasteBord;
    std::optional<Utfall> senasteUtfall;
    std::unique_ptr<SpelBord> koll;
    std::unique_ptr<SpelBord> kollFore;

    std::optional<Drag> senasteTips;
    std::deque<Drag> slutDrag;
    bool egnaGester = false;
    // The table and view size the last search for moves the window shows was asked for, and
    // the notice to give when it finds no way.
    std::unique_ptr<SpelBord> synligtBord;
    QSize synligtStorlek;
    QString synligtStopp;

    struct GivSok {
        int spel = 0;
        unsigned bas = 0;
        VinnbarGiv giv;
        std::chrono::steady_clock::time_point slut;
        std::function<void(unsigned)> dela;
    };
    std::optional<GivSok> givSok;
};

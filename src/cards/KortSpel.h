#pragma once

#include "cards/Drag.h"
#include "cards/Lucka.h"
#include "cards/SpelBord.h"
#include "cards/SpelRegler.h"
#include "cards/SpelYta.h"
#include "platform/Geometry.h"
#include "platform/SystemTime.h"

#include <QFont>
#include <QImage>

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QPainter;
enum class Utseende;

// What every game shares for showing cards: the card-face picture (shared by all games
// alive, rendered at the current card size and the play view's pixel ratio), the drag image
// and its hot spot, the slots being dragged, and the card animations. Every rectangle a game
// sees is in view units; only the pictures have more pixels on a screen that has more.
class KortSpel {
public:
    KortSpel();
    virtual ~KortSpel();
    KortSpel(const KortSpel&) = delete;
    KortSpel& operator=(const KortSpel&) = delete;

    // A card flies from `animFran` to `animTill` with face `animKort` in `tid` microseconds,
    // in 400 steps along a straight line, each step put on screen at once. The start place
    // is repainted first (background, or face `animUnderKort` at `animUnderPos`), with an
    // empty slot's outline when `kant` is true.
    virtual void TTAnimeraKort(SpelYta* view, int tid, bool kant);
    // As TTAnimeraKort, but the start place always shows the background.
    virtual void UUAnimeraKort(SpelYta* view, int tid, bool kant);
    // As TTAnimeraKort, but what flies is the whole drag image `bmp` (a run of cards).
    virtual void XXAnimeraKort(SpelYta* view, int tid, bool kant);

    // Sets up the next flight: from, to, the flying face, and what shows at the start
    // place beneath it (nothing when `underPos` is the zero rectangle).
    void SattAnimering(BRect fran, BRect till, BRect kort, BRect underPos = BRect(0, 0, 0, 0),
                       BRect underKort = BRect(0, 0, 0, 0));

    // Renders all 52 faces and the four backs at w × h view units and `pixelKvot` device
    // pixels to a unit: look A (symbol top left, one label) or look B (symbols and labels in
    // two corners).
    void KortUtSeende_A(int w, int h);
    void KortUtSeende_B(int w, int h);

    // The face rectangle of a card in the card-face picture.
    BRect FramsidaFor(const Kort& kort) const;
    // Gives the card in every filled slot its face rectangle.
    void GeKortenFramsidor(std::vector<Lucka>& luckor) const;

    // Drawing shared by the games, into the off-screen frame.
    void RitaKort(QPainter& p, BRect kortBild, BRect till) const;
    void RitaLucka(QPainter& p, const Lucka& lucka) const;
    static void RitaKantLinje(QPainter& p, BRect pos);
    static void RitaKnapp(QPainter& p, BRect pos, const char* text, rgb_color fyllning,
                          rgb_color textFarg);
    static void RitaRaknare(QPainter& p, BRect pos, const char* text, int varde);
    // A rounded rectangle filled with `fyllning` and outlined in black.
    static void RitaRundRuta(QPainter& p, BRect pos, float radie, rgb_color fyllning);
    // The font of the table's texts: buttons, counters, markers.
    static QFont BordsFont();
    // A text on the table in the table's font, its base line starting at `bas`.
    static void RitaText(QPainter& p, BPoint bas, const char* text,
                         rgb_color farg = rgb_color{0, 0, 0, 255});
    // The drag image: the given slots' cards, laid where they lie, cut to their union.
    void ByggDragBild(const std::vector<Lucka>& luckor, const std::vector<int>& valda,
                      BPoint where);

    // Class-wide: the drag image and its hot spot, the card faces, the suit symbols.
    static QImage bmp;
    static BPoint point;
    static QImage mp_kortbitmap;
    static QImage mp_kortsrcbitmap;
    // The device pixels to a view unit of the card pictures: the play view's, which sets it
    // before its game lays out its cards.
    static qreal pixelKvot;
    // How many game objects share the pictures above.
    static int antalSpel;

    std::vector<int> valdaLuckor;
    BRect animUnderPos = BRect(0, 0, 0, 0);
    BRect animUnderKort = BRect(0, 0, 0, 0);
    BRect animTill = BRect(0, 0, 0, 0);
    BRect animFran = BRect(0, 0, 0, 0);
    BRect animKort = BRect(0, 0, 0, 0);
    bool animera = false;
    std::array<BRect, 4> symbolPos;
    std::vector<BRect> kortPos;
    std::array<BRect, 4> baksidaPos;

private:
    enum class Flygande { Framsida, DragBild };
    void RitaFramsidor(Utseende utseende, int w, int h);
    void AnimeraKort(SpelYta* view, int tid, bool kant, bool visaUnder, Flygande vad);
};

// The interface through which the window and the play view drive whichever game is
// current. A game keeps its table as a SpelBord of its own type (see PatiensPa), and its
// rules, written once in the game's Qt-free rules, decide every move its gestures make.
class Patiens : public KortSpel {
public:
    Patiens() = default;
    ~Patiens() override = default;

    virtual void NyttSpel(BRect bounds) = 0;
    virtual bool KlarSpel() = 0;
    virtual void RitaSpel(QPainter& offView) = 0;
    virtual void DelaUtKort() = 0;
    virtual void BlandaKort() = 0;
    virtual void OmRaknaLuckaKort(BRect bounds) = 0;
    virtual bool FlyttaKort(SpelYta* view, BPoint where) = 0;
    virtual void Drop(SpelYta* view, int target) = 0;
    virtual void SpelKnapp(BPoint where) = 0;
    virtual void NyttForsok() = 0;
    virtual int Undo() = 0;
    virtual bool Has_Undos() = 0;
    virtual int AddHiscore() = 0;
    // Makes again, with its flights, the move the last undo took back; returns the moves
    // left to make again (0 when there was none to make).
    virtual int Redo() = 0;
    // True after an undo, until a move, a new attempt or a new deal forgets what it took back.
    virtual bool Has_Redos() = 0;
    // Deals the current deal's cards again, in the order they were first dealt.
    virtual void OmGiv(BRect bounds) = 0;
    // Whether the deal a new game object makes is shuffled like New Deal's, so that it is
    // the deal of the random numbers' seed. Idioten 2's first deal is not.
    virtual bool ForstaGivetBlandat() const { return true; }

    // Whether the pointer, pressed at `press`, has left the square inside which a release
    // is still a click. Most games allow 4 pixels each way; others, LamnatOjamnKlickRuta.
    virtual bool LamnatKlickRutan(BPoint press, BPoint now) const;

    // The game's number (0..11): its hiscore table and remembered window frame.
    virtual int SpelNummer() const = 0;

    // The game's rules, and its table as they see it.
    virtual const SpelRegler& Regler() const = 0;
    virtual SpelBord& Tabell() = 0;
    virtual const SpelBord& Tabell() const = 0;
    // How a player makes `drag` on this table with the mouse, laid out as it is now; none
    // when no gesture makes exactly that move.
    virtual std::optional<Gest> GestFor(const Drag& drag) const = 0;

    const std::vector<Lucka>& Luckor() const { return Tabell().luckor; }
    const std::vector<std::pair<int, int>>& UndoLista() const { return Tabell().undoLista; }
    const Kortlek& Kortleken() const { return Tabell().kortlek; }
    int AntalUndo() const { return Tabell().antalUndo; }
    bigtime_t StartTid() const { return startTid; }
    // Lets a test lay out a particular table; the game recounts it with KlarSpel.
    std::vector<Lucka>& LuckorForTest() { return Tabell().luckor; }

protected:
    // The player's intention after a press, read from the mouse as the view resolved it.
    enum class Avsikt { Klick, Drag };
    Avsikt VantaPaAvsikt(SpelYta* view, BPoint where) const;

    // Draws the whole table through the off-screen frame and shows it.
    void RitaBordet();
    // The common end of every NyttSpel: the table drawn through the off-screen frame
    // and shown, and the clock started.
    void VisaNyttSpel();
    // A press on the single card of slot `kalla`, as most games take it: a click makes
    // `klick` (when there is one), flown by `flyg`, and returns false; a drag picks the card
    // up with its image and returns true.
    bool KlickaEllerLyft(SpelYta* view, BPoint where, int kalla, const std::optional<Drag>& klick,
                         Flygledare* flyg);
    // The single card being dragged, let go: its slot (-1 when none or several were
    // dragged) and the point it was released at.
    int SlapptKort(SpelYta* view, BPoint* where);
    // Shows the stock (or any slots) face down in the off-screen frame before a deal.
    void RitaBaksidor(int forsta, int sista);
    // The card of slot `fran` flies to slot `till` in `tid` microseconds; the card in slot
    // `under` (none when it is -1 or empty) shows at the start place, its back when its
    // slot is face down or `baksidaUnder` says so, and with `kant` the empty slot's outline.
    void FlygLucka(int fran, int till, int under, int tid, bool kant, bool baksidaUnder = false);

    bigtime_t startTid = 0;
    SpelYta* vy = nullptr;

public:
    // A button drawn on the table, and its text.
    struct KnappPlats {
        BRect ruta;
        std::string namn;
    };
    // The buttons a player can click now; the piles are the rules' (Regler().Hogar).
    virtual std::vector<KnappPlats> Knappar() const { return {}; }
};

// The click square of the games that take four pixels left or up as already a drag, and
// four right or down as still a click.
bool LamnatOjamnKlickRuta(BPoint press, BPoint now);

// A game whose table is a B (a BordAv<B>).
template <typename B> class PatiensPa : public Patiens {
public:
    SpelBord& Tabell() override { return bord; }
    const SpelBord& Tabell() const override { return bord; }
    const B& Bordet() const { return bord; }
    // Lets a test set up a particular table, counters included.
    B& BordForTest() { return bord; }

protected:
    B bord;
};

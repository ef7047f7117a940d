#pragma once

#include "cards/Drag.h"
#include "cards/KortSpel.h"
#include "platform/Geometry.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class FjolkView;
class QKeyEvent;

// A place on the table the keyboard reaches: a pile (its top card, or its empty base), or
// a button.
struct BordsPlats {
    // The pile's index in the game's pile table, or -1 for a button.
    int hog = -1;
    int knapp = -1;
    BRect ram;
    // Where a click is made.
    BPoint klick;
    // The pile's cards from the top down, and where a press takes each: pressing deeper
    // takes the cards above along, as the game's own drag does.
    std::vector<int> luckor;
    std::vector<BRect> rutor;
    std::vector<BPoint> grepp;
    // Where held cards are aimed at when put down here.
    BRect mal;
    // The row it is read in, from 0.
    int rad = 0;
    // What a screen reader says of it.
    std::string namn;
    // Whether the frame comes to it: a pyramid card that others lie over is read out with
    // the table, but nothing can be done there.
    bool iFokus = true;
    bool SammaSom(const BordsPlats& annan) const {
        return hog == annan.hog && knapp == annan.knapp;
    }
};

// Every place of `spel` a player can act on, inside `synligt`, in the order one reads the
// table: row by row, left to right.
std::vector<BordsPlats> PlatserPa(const Patiens& spel, BRect synligt);

// The keys that make a mouse gesture: a click at place `kalla`, or the cards taken at its
// press point `grepp` (0: the top card) put down at place `mal`.
struct TangentPlan {
    bool klick = true;
    int kalla = -1;
    int grepp = 0;
    int mal = -1;
};
// The place and card (0: the top) a press at `p` takes, and the place a release at `q`
// aims at.
std::optional<std::pair<int, int>> GreppVid(const std::vector<BordsPlats>& platser, BPoint p);
int MalVid(const std::vector<BordsPlats>& platser, BPoint q);
std::optional<TangentPlan> PlanFor(const std::vector<BordsPlats>& platser, const Gest& gest);

// Plays the game on the view with keys, through the same press and release the mouse makes:
// the arrows move a focus frame over the places, Home and End to the first and last; Enter
// or Space clicks there; "." takes the cards there (again: one card more), and the arrows
// carry them to where Enter, Space or "." puts them down; Escape puts them back.
class Tangentbord {
public:
    explicit Tangentbord(FjolkView& view);

    // Handles a key; false when it is none of the keyboard's.
    bool Tangent(const QKeyEvent& event);
    // The places now, the one in focus (-1: none) and whether the frame shows.
    const std::vector<BordsPlats>& Platserna() const { return platser; }
    int Fokus() const { return fokus; }
    const BordsPlats* FokusPlats() const;
    bool Synlig() const { return synlig; }
    void Gom() { synlig = false; }
    // Puts held cards back, as Escape does; nothing when none are held.
    void Avbryt() {
        if (haller)
            LaggTillbaka();
    }
    bool Haller() const { return haller; }
    // Takes the places anew from the game, the focus staying on the same place (or the one
    // nearest where it was).
    void Folj();

private:
    void Flytta(int nyttFokus);
    void FlyttaRad(int riktning);
    // The nearest place from `fran` on, `steg` at a time, that the frame comes to; -1: none.
    int NastaIFokus(int fran, int steg) const;
    void Klicka();
    void Lyft();
    void LaggNer();
    void LaggTillbaka();
    BPoint SlappPunkt(const BordsPlats& mal) const;
    BPoint SlappPunktVid(int mal) const;
    // The table as it is, while a screen reader listens: to tell it when a key moved nothing.
    std::unique_ptr<SpelBord> Fore() const;
    // Takes the places anew after a key's move; what the move did the view tells, that it
    // did nothing is told here.
    void EfterDrag(const std::unique_ptr<SpelBord>& fore);
    // Tells a screen reader `text`: the place the frame has come to, or what was done.
    void Sag(const std::string& text, bool nyPlats = false);

    FjolkView& vy;
    std::vector<BordsPlats> platser;
    int fokus = -1;
    bool synlig = false;
    bool haller = false;
    BordsPlats kalla;
    int grepp = 0;
    BPoint greppPunkt;
    BRect greppRuta;
};

#pragma once

#include "cards/Drag.h"
#include "cards/Hiscore.h"
#include "cards/Hogar.h"
#include "cards/SokKunskap.h"
#include "cards/SpelBord.h"

#include <memory>
#include <vector>

// A game's rules as functions of its table alone, the same ones its gestures use: the
// soak test, hints and a solver play through them without a window.
class SpelRegler {
public:
    virtual ~SpelRegler() = default;

    // A table of the game's slots, all empty.
    virtual std::unique_ptr<SpelBord> NyttBord() const = 0;
    // A new deal up to the dealing: slots emptied, counters reset, a fresh deck shuffled
    // and laid where the deal takes its cards from.
    virtual void LaggUtLeken(SpelBord& bord) const = 0;
    // Deals onto the table, telling `flyg` (may be null) of every card first.
    virtual void DelaUt(SpelBord& bord, Flygledare* flyg) const = 0;
    // Every move a player could make now, by any gesture, in a stable order.
    virtual std::vector<Drag> LagligaDrag(const SpelBord& bord) const = 0;
    // Makes one of those moves, with the undo records the gesture would push.
    virtual void GorDrag(SpelBord& bord, const Drag& drag, Flygledare* flyg) const = 0;
    // Takes back the newest move; returns the undo records left (0 when there was none).
    virtual int Angra(SpelBord& bord, Flygledare* flyg) const = 0;
    // Recounts the table (progress, marks) and says whether the game is won.
    virtual bool KlarSpel(SpelBord& bord) const = 0;
    // What the hiscore table records of this table besides its undos.
    virtual HiscoreResultat Resultat(const SpelBord& bord) const = 0;

    // The table's piles in words, in the order a player reads the table; none where the
    // game names none.
    virtual std::vector<Hog> Hogar(const SpelBord& /*bord*/) const { return {}; }
    // What the game knows about searching its moves (the defaults when it knows nothing).
    virtual const SokKunskap& Kunskap() const { return StandardKunskap(); }
};

// The functions one game's rules are written as, over its own table type B.
template <typename B> struct ReglerFunktioner {
    void (*skapa)(B&);
    void (*laggUtLeken)(B&);
    void (*delaUt)(B&, Flygledare*);
    std::vector<Drag> (*lagligaDrag)(const B&);
    void (*gorDrag)(B&, const Drag&, Flygledare*);
    int (*angra)(B&, Flygledare*);
    bool (*klarSpel)(B&);
    HiscoreResultat (*resultat)(const B&);
};

template <typename B> class ReglerAv final : public SpelRegler {
public:
    explicit ReglerAv(ReglerFunktioner<B> f, const SokKunskap* k = nullptr) : fn(f), kunskap(k) {}

    std::unique_ptr<SpelBord> NyttBord() const override {
        auto bord = std::make_unique<B>();
        fn.skapa(*bord);
        return bord;
    }
    void LaggUtLeken(SpelBord& b) const override { fn.laggUtLeken(Av(b)); }
    void DelaUt(SpelBord& b, Flygledare* flyg) const override { fn.delaUt(Av(b), flyg); }
    std::vector<Drag> LagligaDrag(const SpelBord& b) const override {
        return fn.lagligaDrag(Av(b));
    }
    void GorDrag(SpelBord& b, const Drag& d, Flygledare* flyg) const override {
        fn.gorDrag(Av(b), d, flyg);
    }
    int Angra(SpelBord& b, Flygledare* flyg) const override { return fn.angra(Av(b), flyg); }
    bool KlarSpel(SpelBord& b) const override { return fn.klarSpel(Av(b)); }
    HiscoreResultat Resultat(const SpelBord& b) const override { return fn.resultat(Av(b)); }
    // A game names its piles with a function HogTabell over its table, in the table's own
    // namespace.
    std::vector<Hog> Hogar(const SpelBord& b) const override {
        if constexpr (requires(const B& t) { HogTabell(t); })
            return HogTabell(Av(b));
        else
            return {};
    }
    const SokKunskap& Kunskap() const override {
        return kunskap != nullptr ? *kunskap : StandardKunskap();
    }

private:
    static B& Av(SpelBord& b) { return static_cast<B&>(b); }
    static const B& Av(const SpelBord& b) { return static_cast<const B&>(b); }

    ReglerFunktioner<B> fn;
    const SokKunskap* kunskap;
};

// The rules of a game written, as most are, as the functions Skapa, LaggUtLeken, DelaUt,
// LagligaDrag, GorDrag, Angra, KlarSpel and Resultat over its table B in B's own namespace.
template <typename B> ReglerFunktioner<B> SpeletsFunktioner() {
    return {
        [](B& b) { Skapa(b); },
        [](B& b) { LaggUtLeken(b); },
        [](B& b, Flygledare* f) { DelaUt(b, f); },
        [](const B& b) { return LagligaDrag(b); },
        [](B& b, const Drag& d, Flygledare* f) { GorDrag(b, d, f); },
        [](B& b, Flygledare* f) { return Angra(b, f); },
        [](B& b) { return KlarSpel(b); },
        [](const B& b) { return Resultat(b); },
    };
}
// The rules with what the game knows about searching its moves, its SokKunskap K.
template <typename B, typename K> const SpelRegler& SpeletsRegler() {
    static const ReglerAv<B> regler(SpeletsFunktioner<B>(), &KunskapAv<K>());
    return regler;
}

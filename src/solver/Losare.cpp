#include "solver/Losare.h"

#include "cards/Hogar.h"
#include "platform/SystemTime.h"
#include "solver/Nyckeltabell.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace {

using Klocka = std::chrono::steady_clock;
// How far, in quarters of the measure, a move another order than the first tries may lie
// behind the nearest and still go before it: up to eight whole steps, so that the orders
// differ in more than their ties.
constexpr unsigned kSpridning = 32;
// Room for the moves of a table, made once for each level of the search.
constexpr std::size_t kDragPerNiva = 48;

// One table on the way down: its moves and the next to try.
struct Niva {
    std::vector<Drag> drag;
    std::size_t nasta = 0;
};

class Sokning {
public:
    Sokning(const SpelRegler& r, const SpelBord& start, const SokGranser& g, std::stop_token s,
            const SokKrok& k, bool h, unsigned ordning = 0)
        : regler(r), kunskap(r.Kunskap()), granser(g), stopp(std::move(s)), krok(k),
          bord(start.Kopia()), drag(r, *bord), borjan(Klocka::now()),
          tradBorjan(g.tradTid ? thread_time() : 0), hastig(h),
          narmast(h && kunskap.Avstand(start) >= 0), slump(0x9e3779b97f4a7c15ull * ordning),
          blandad(ordning != 0) {}

    // Searches on until an answer, or until `paus` tables (0: never) have been made in all;
    // then std::nullopt, and the next call goes on where this one stopped.
    std::optional<SokSvar> Kor(std::uint64_t paus = 0) {
        if (!borjad) {
            borjad = true;
            if (regler.KlarSpel(*bord))
                return Svar(Utfall::Vinnbar);
            Sett(*bord);
            Oppna(0);
        }
        // The first step checks too: a search asked to stop before it began stops at once.
        for (;; ++steg) {
            if ((steg == 1 || steg % kKollIntervall == 0) && Stanna())
                return Svar(Utfall::Okant);
            if (paus != 0 && svar.lagen >= paus)
                return std::nullopt;
            Niva& n = nivaer[djup];
            if (n.nasta == n.drag.size()) {
                if (djup == 0)
                    return Svar(Utfall::Ovinnbar);
                --djup;
                drag.TaTillbaka();
                continue;
            }
            const Drag d = n.drag[n.nasta++];
            if (djup > 0 &&
                kunskap.GarTillbaka(nivaer[djup - 1].drag[nivaer[djup - 1].nasta - 1], d))
                continue;
            drag.Gor(d);
            ++svar.lagen;
            if (regler.KlarSpel(*bord)) {
                for (std::size_t i = 0; i <= djup; ++i)
                    svar.drag.push_back(nivaer[i].drag[nivaer[i].nasta - 1]);
                return Svar(Utfall::Vinnbar);
            }
            if (!Sett(*bord)) {
                drag.TaTillbaka();
                continue;
            }
            ++djup;
            Oppna(djup);
        }
    }

    std::uint64_t Lagen() const { return svar.lagen; }
    // Whether the search stopped as its memory ran out.
    bool Fullt() const { return fullt; }

    std::chrono::microseconds Forbrukat() const {
        if (granser.tradTid)
            return std::chrono::microseconds(thread_time() - tradBorjan);
        return std::chrono::duration_cast<std::chrono::microseconds>(Klocka::now() - borjan);
    }

    std::size_t Minne() const {
        std::size_t m = sedda.Minne();
        for (const Niva& n : nivaer)
            m += sizeof(Niva) + n.drag.capacity() * sizeof(Drag);
        return m;
    }

private:
    // Lists the moves of the table at depth `niva`: the one safe move alone when there is
    // one, else all the search may make, in the game's order.
    void Oppna(std::size_t niva) {
        // A new level gets room for a table's moves at once rather than by doublings.
        if (nivaer.size() <= niva) {
            nivaer.resize(niva + 1);
            nivaer.back().drag.reserve(kDragPerNiva);
        }
        Niva& n = nivaer[niva];
        n.nasta = 0;
        Lista(n.drag);
    }

    // The moves of the table: the one safe move alone when there is one, else all the search
    // may make, in the game's order.
    void Lista(std::vector<Drag>& dragen) {
        if (kunskap.Hopplos(*bord)) {
            dragen.clear();
            return;
        }
        if (!kunskap.ListaDrag(*bord, dragen))
            dragen = regler.LagligaDrag(*bord);
        std::erase_if(dragen, [&](const Drag& d) {
            if (kunskap.Sokbart(d))
                return false;
            svar.inomForsoket = true;
            return true;
        });
        if (granser.bara)
            std::erase_if(dragen, [&](const Drag& d) { return !granser.bara(*bord, d); });
        int saker = kunskap.SakertDrag(*bord, dragen);
        if (saker < 0 && hastig) {
            saker = kunskap.TroligtDrag(*bord, dragen);
            if (saker < 0)
                kunskap.GallraHastigt(*bord, dragen);
        }
        if (saker >= 0) {
            Drag d = dragen[static_cast<std::size_t>(saker)];
            dragen.assign(1, d);
        } else {
            kunskap.Ordna(*bord, dragen);
            if (narmast)
                NarmastForst(dragen);
        }
    }

    // Orders the moves by how near the table after each is to won, the game's order among
    // equals; another order than the first draws lots among equals and lets a move
    // further off go first now and then.
    void NarmastForst(std::vector<Drag>& dragen) {
        avstand.clear();
        if (!kunskap.AvstandEfter(*bord, dragen, efter)) {
            efter.clear();
            for (const Drag& d : dragen) {
                drag.Gor(d);
                efter.push_back(kunskap.Avstand(*bord));
                drag.TaTillbaka();
            }
        }
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            int a = efter[i];
            if (blandad)
                a = a * 4 + static_cast<int>(Slump() % kSpridning);
            avstand.emplace_back(a, static_cast<int>(i));
        }
        std::sort(avstand.begin(), avstand.end());
        ordnade.resize(avstand.size());
        for (std::size_t j = 0; j < avstand.size(); ++j)
            ordnade[j] = dragen[static_cast<std::size_t>(avstand[j].second)];
        dragen.swap(ordnade);
    }

    std::uint64_t Slump() {
        slump ^= slump << 13;
        slump ^= slump >> 7;
        slump ^= slump << 17;
        return slump;
    }

    bool Sett(const SpelBord& b) {
        nyckel.clear();
        kunskap.Nyckel(b, nyckel);
        return sedda.LaggTill(nyckel);
    }

    bool Stanna() {
        if (krok)
            krok();
        if (stopp.stop_requested()) {
            svar.avbruten = true;
            return true;
        }
        if (granser.lagen != 0 && svar.lagen >= granser.lagen)
            return true;
        if (granser.tid.count() != 0 && Forbrukat() >= granser.tid)
            return true;
        std::size_t minne = Minne();
        if (minne > svar.minne)
            svar.minne = minne;
        fullt = granser.minne != 0 && minne >= granser.minne;
        return fullt;
    }

    SokSvar Svar(Utfall utfall) {
        svar.utfall = utfall == Utfall::Ovinnbar && granser.bara ? Utfall::Okant : utfall;
        svar.tid = Forbrukat();
        svar.minne = std::max(svar.minne, Minne());
        return std::move(svar);
    }

    const SpelRegler& regler;
    const SokKunskap& kunskap;
    SokGranser granser;
    std::stop_token stopp;
    const SokKrok& krok;
    std::unique_ptr<SpelBord> bord;
    DragPaBord drag;
    std::vector<Niva> nivaer;
    Nyckeltabell sedda;
    std::vector<std::pair<int, int>> avstand;
    std::vector<int> efter; // the measure after each move
    std::vector<Drag> ordnade;

    std::string nyckel;
    SokSvar svar;
    Klocka::time_point borjan;
    bigtime_t tradBorjan;
    bool hastig;
    bool narmast; // the quick pass of a game that measures how far a table is from won
    std::uint64_t slump;
    bool blandad;
    bool borjad = false;
    bool fullt = false;
    std::size_t djup = 0; // nivaer[0..djup] are the tables on the way down
    std::uint64_t steg = 1;
};

} // namespace

DragPaBord::DragPaBord(const SpelRegler& r, SpelBord& b)
    : regler(r), kunskap(r.Kunskap()), bord(b) {}

DragPaBord::~DragPaBord() = default;

void DragPaBord::Gor(const Drag& d) {
    if (steg.size() <= antal)
        steg.resize(antal + 1);
    Steg& s = steg[antal];
    s.antalUndo = bord.antalUndo;
    s.undoFore = bord.undoLista.size();
    s.kopia = !kunskap.TasTillbaka(bord, d);
    if (s.kopia) {
        ++kopior;
        if (sparade.size() <= antal)
            sparade.resize(antal + 1);
        if (!sparade[antal])
            sparade[antal] = bord.Kopia();
        else
            sparade[antal]->TaFran(bord);
    }
    regler.GorDrag(bord, d, nullptr);
    ++antal;
    if (!s.kopia && bord.undoLista.size() <= s.undoFore)
        throw std::logic_error("a move to be taken back by undo left no undo record: " +
                               Beskriv(d));
}

void DragPaBord::TaTillbaka() {
    Steg& s = steg[--antal];
    if (s.kopia) {
        bord.TaFran(*sparade[antal]);
        return;
    }
    regler.Angra(bord, nullptr);
    bord.antalUndo = s.antalUndo;
    if (bord.undoLista.size() != s.undoFore)
        throw std::logic_error("undo did not take back exactly one move");
}

namespace {

// A pass of several orders in one answer: the tables and time of all of them (and of the
// orders that started again, `lagda` tables), the most memory they held together.
SokSvar Samman(SokSvar s, const std::vector<std::unique_ptr<Sokning>>& sokningar,
               std::uint64_t lagda) {
    s.lagen = lagda;
    s.minne = 0;
    for (const auto& sokning : sokningar) {
        s.lagen += sokning->Lagen();
        s.minne += sokning->Minne();
    }
    s.tid = sokningar.front()->Forbrukat();
    return s;
}

// The first turn of each order, in tables; each round's turns are half as long again.
constexpr std::uint64_t kForstaTur = 400;
// The first order's first turn is longer: most deals it wins on its own, and soon.
constexpr std::uint64_t kForsprang = 1500;
// Every other order (the second, the fourth...) that has made this many tables without a
// win starts again with new lots: a deal's hardest tails are dead ends every order went
// deep into early. The others go on, as a win may lie deep.
constexpr std::uint64_t kOmstart = 3000;

// The quick pass of a game that offers several orders: one search per order, each on its
// own table and with its own tables seen, taking turns of a few hundred tables each, with
// turns that grow. A deal that one order finds late another often finds at once. The pass
// ends with the first win, when an order has run through what it tries (every order
// reaches the same tables, each in its own order, so one answers for all), or at the
// limits (all the orders' tables counted together).
// With `helasVikt` above 0 the complete search takes its turns among them, each that many
// times an order's, and the pass is the whole search: the complete search's answer, a win
// or that the deal cannot be won, ends it; quick orders that have run through, and any
// search that runs out of its memory, drop out while the others go on, and when none is
// left the deal is not known.
SokSvar SnabbaOrdningar(const SpelRegler& regler, const SpelBord& bord, const SokGranser& granser,
                        int ordningar, std::stop_token stopp, const SokKrok& krok,
                        int helasVikt = 0) {
    const bool medHela = helasVikt > 0;
    const auto antal = static_cast<std::size_t>(ordningar);
    const std::size_t deltagare = antal + (medHela ? 1 : 0);
    SokGranser var = granser;
    var.lagen = 0;
    // The complete search among them has half the memory: it is the one that can go on to
    // the end.
    var.minne = granser.minne / (medHela ? 2 * antal : antal);
    // Each order begins at its first turn: a deal the first order wins in its first turn
    // costs no more than one order alone. A later one counts the time the pass has had.
    std::vector<std::unique_ptr<Sokning>> sokningar;
    unsigned nastaLotter = 0; // the lots of the next order begun
    auto ny = [&](bool hela) {
        SokGranser egna = var;
        if (hela)
            egna.minne = granser.minne / 2;
        if (!sokningar.empty() && var.tid.count() != 0)
            egna.tid = std::max(std::chrono::milliseconds(1),
                                var.tid - std::chrono::duration_cast<std::chrono::milliseconds>(
                                              sokningar.front()->Forbrukat()));
        return hela ? std::make_unique<Sokning>(regler, bord, egna, stopp, krok, false)
                    : std::make_unique<Sokning>(regler, bord, egna, stopp, krok, true,
                                                nastaLotter++);
    };
    sokningar.push_back(ny(false));
    std::vector<bool> ute(deltagare, false); // dropped out (with the complete search only)
    std::uint64_t lagda = 0;                 // the tables of the orders that started again
    auto alla = [&] {
        std::uint64_t n = lagda;
        for (const auto& sokning : sokningar)
            n += sokning->Lagen();
        return n;
    };
    for (std::uint64_t tur = kForstaTur;; tur += tur / 2) {
        for (std::size_t i = 0; i < deltagare; ++i) {
            if (i == sokningar.size())
                sokningar.push_back(ny(i == antal));
            if (ute[i])
                continue;
            std::uint64_t turen = i == 0 && sokningar[0]->Lagen() == 0 ? kForsprang : tur;
            if (i == antal)
                turen *= static_cast<std::uint64_t>(helasVikt);
            if (granser.lagen != 0) {
                const std::uint64_t gjort = alla();
                if (gjort >= granser.lagen)
                    return Samman(SokSvar{}, sokningar, lagda);
                turen = std::min(turen, granser.lagen - gjort);
            }
            std::optional<SokSvar> s = sokningar[i]->Kor(sokningar[i]->Lagen() + turen);
            if (s && medHela && i < antal && s->utfall == Utfall::Ovinnbar) {
                std::fill(ute.begin(), ute.begin() + static_cast<std::ptrdiff_t>(antal), true);
                continue;
            }
            if (s && medHela && sokningar[i]->Fullt()) {
                ute[i] = true;
                continue;
            }
            if (s)
                return Samman(*s, sokningar, lagda);
            if (i < antal && i % 2 == 1 && sokningar[i]->Lagen() >= kOmstart) {
                lagda += sokningar[i]->Lagen();
                sokningar[i] = ny(false);
            }
        }
        if (std::find(ute.begin(), ute.end(), false) == ute.end())
            return Samman(SokSvar{}, sokningar, lagda);
    }
}

} // namespace

// A game with likely moves is first searched making them at once, on its share of the
// limits (SokKunskap::SnabbAndel, half unless the game says otherwise): a win found so is
// a win. Otherwise, or when that pass runs out, the full search decides on
// what is left. A game may instead have the full search take turns with the quick orders
// from the start (SokKunskap::HelaITur).
SokSvar Los(const SpelRegler& regler, const SpelBord& bord, const SokGranser& granser,
            std::stop_token stopp, const SokKrok& krok) {
    if (!regler.Kunskap().HarTroligaDrag())
        return *Sokning(regler, bord, granser, std::move(stopp), krok, false).Kor();
    if (const int vikt = regler.Kunskap().HelaITur(); vikt > 0)
        return SnabbaOrdningar(regler, bord, granser, regler.Kunskap().Ordningar(bord), stopp, krok,
                               vikt);
    SokGranser snabba = granser;
    const auto andel =
        static_cast<std::uint64_t>(std::clamp(regler.Kunskap().SnabbAndel(), 1, 100));
    snabba.lagen =
        std::max<std::uint64_t>(1, granser.lagen / 100 * andel + granser.lagen % 100 * andel / 100);
    snabba.tid = granser.tid * static_cast<int>(andel) / 100;
    const int ordningar = regler.Kunskap().Ordningar(bord);
    // Without a limit on tables the quick pass still ends, for the full search to decide:
    // after as many tables for each of its orders as one order alone would have.
    if (granser.lagen == 0)
        snabba.lagen = 200000u * static_cast<std::uint64_t>(std::max(1, ordningar));
    SokSvar forsta = ordningar > 1 ? SnabbaOrdningar(regler, bord, snabba, ordningar, stopp, krok)
                                   : *Sokning(regler, bord, snabba, stopp, krok, true).Kor();
    if (forsta.utfall == Utfall::Vinnbar || forsta.avbruten)
        return forsta;
    SokGranser resten = granser;
    if (granser.lagen != 0)
        resten.lagen = granser.lagen - std::min(granser.lagen - 1, forsta.lagen);
    if (granser.tid.count() != 0)
        resten.tid = std::max(
            std::chrono::milliseconds(1),
            granser.tid - std::chrono::duration_cast<std::chrono::milliseconds>(forsta.tid));
    SokSvar svar = *Sokning(regler, bord, resten, std::move(stopp), krok, false).Kor();
    svar.lagen += forsta.lagen;
    svar.tid += forsta.tid;
    svar.minne = std::max(svar.minne, forsta.minne);
    svar.inomForsoket = svar.inomForsoket || forsta.inomForsoket;
    return svar;
}

const char* UtfallNamn(Utfall utfall) {
    switch (utfall) {
    case Utfall::Vinnbar:
        return "won-able";
    case Utfall::Ovinnbar:
        return "cannot be won";
    case Utfall::Okant:
        break;
    }
    return "not known";
}

std::string DragIOrd(const SpelRegler& regler, const SpelBord& fore, const Drag& drag) {
    const SokKunskap& k = regler.Kunskap();
    const std::vector<Hog> hogar = regler.Hogar(fore);
    auto plats = [&](int i) {
        const Hog* hog = HogMed(hogar, i);
        return hog ? HogNamn(*hog) : "slot " + std::to_string(i);
    };
    auto kort = [&](int i) {
        return i >= 0 && i < static_cast<int>(fore.luckor.size())
                   ? KortNamn(fore.luckor[i].GeKort())
                   : std::string("no card");
    };
    switch (drag.slag) {
    case DragSlag::Kort:
        return kort(drag.fran) + " from " + plats(drag.fran) + " to " + plats(drag.till);
    case DragSlag::Rad:
        return std::to_string(drag.antal) + " cards from " + kort(drag.fran) + " up, from " +
               plats(drag.fran) + " to " + plats(drag.till);
    case DragSlag::Par:
        return kort(drag.fran) + " from " + plats(drag.fran) + " and " + kort(drag.andra) +
               " from " + plats(drag.andra) + " together";
    case DragSlag::Knapp:
        return k.KnappNamn();
    case DragSlag::NyttForsok:
        break;
    }
    return "a new attempt";
}

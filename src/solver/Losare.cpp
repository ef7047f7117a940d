#include "solver/Losare.h"

#include "cards/Hogar.h"
#include "platform/SystemTime.h"
#include "solver/Nyckeltabell.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using Klocka = std::chrono::steady_clock;

// One table on the way down: its moves and the next to try.
struct Niva {
    std::vector<Drag> drag;
    std::size_t nasta = 0;
};

class Sokning {
public:
    Sokning(const SpelRegler& r, const SpelBord& start, const SokGranser& g, std::stop_token s,
            const SokKrok& k, bool h)
        : regler(r), kunskap(r.Kunskap()), granser(g), stopp(std::move(s)), krok(k),
          bord(start.Kopia()), drag(r, *bord), borjan(Klocka::now()),
          tradBorjan(g.tradTid ? thread_time() : 0), hastig(h),
          narmast(h && kunskap.Avstand(start) >= 0) {}

    SokSvar Kor() {
        if (regler.KlarSpel(*bord))
            return Svar(Utfall::Vinnbar);
        Sett(*bord);
        Oppna(0);
        std::size_t djup = 0; // nivaer[0..djup] are the tables on the way down
        // The first step checks too: a search asked to stop before it began stops at once.
        for (std::uint64_t steg = 1;; ++steg) {
            if ((steg == 1 || steg % kKollIntervall == 0) && Stanna())
                return Svar(Utfall::Okant);
            Niva& n = nivaer[djup];
            if (n.nasta == n.drag.size()) {
                if (djup == 0)
                    return Svar(Utfall::Ovinnbar);
                --djup;
                drag.TaTillbaka();
                continue;
            }
            const Drag d = n.drag[n.nasta++];
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

private:
    // Lists the moves of the table at depth `djup`: the one safe move alone when there is
    // one, else all the search may make, in the game's order.
    void Oppna(std::size_t djup) {
        if (nivaer.size() <= djup)
            nivaer.resize(djup + 1);
        Niva& n = nivaer[djup];
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
    // equals.
    void NarmastForst(std::vector<Drag>& dragen) {
        avstand.clear();
        for (std::size_t i = 0; i < dragen.size(); ++i) {
            drag.Gor(dragen[i]);
            avstand.emplace_back(kunskap.Avstand(*bord), static_cast<int>(i));
            drag.TaTillbaka();
        }
        std::sort(avstand.begin(), avstand.end());
        ordnade.clear();
        for (auto [a, i] : avstand)
            ordnade.push_back(dragen[static_cast<std::size_t>(i)]);
        dragen.swap(ordnade);
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
        return granser.minne != 0 && minne >= granser.minne;
    }

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

    SokSvar Svar(Utfall utfall) {
        svar.utfall = utfall;
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
    std::vector<Drag> ordnade;

    std::string nyckel;
    SokSvar svar;
    Klocka::time_point borjan;
    bigtime_t tradBorjan;
    bool hastig;
    bool narmast; // the quick pass of a game that measures how far a table is from won
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

// A game with likely moves is first searched making them at once, on half the limits: a
// win found so is a win. Otherwise, or when that pass runs out, the full search decides on
// what is left.
SokSvar Los(const SpelRegler& regler, const SpelBord& bord, const SokGranser& granser,
            std::stop_token stopp, const SokKrok& krok) {
    if (!regler.Kunskap().HarTroligaDrag())
        return Sokning(regler, bord, granser, std::move(stopp), krok, false).Kor();
    SokGranser halva = granser;
    halva.lagen = granser.lagen / 2;
    halva.tid = granser.tid / 2;
    if (granser.lagen == 0)
        halva.lagen = 200000;
    SokSvar forsta = Sokning(regler, bord, halva, stopp, krok, true).Kor();
    if (forsta.utfall == Utfall::Vinnbar || forsta.avbruten)
        return forsta;
    SokGranser resten = granser;
    if (granser.lagen != 0)
        resten.lagen = granser.lagen - std::min(granser.lagen - 1, forsta.lagen);
    if (granser.tid.count() != 0)
        resten.tid = std::max(
            std::chrono::milliseconds(1),
            granser.tid - std::chrono::duration_cast<std::chrono::milliseconds>(forsta.tid));
    SokSvar svar = Sokning(regler, bord, resten, std::move(stopp), krok, false).Kor();
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

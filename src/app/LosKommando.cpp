#include "app/LosKommando.h"

#include "games/Spelfabrik.h"

#include <chrono>
#include <cinttypes>
#include <cstdlib>
#include <string>

std::unique_ptr<SpelBord> GivFor(int spel, unsigned fro) {
    const SpelRegler& regler = *ReglerFor(spel);
    auto bord = regler.NyttBord();
    std::srand(fro);
    regler.LaggUtLeken(*bord);
    regler.DelaUt(*bord, nullptr);
    return bord;
}

namespace {

double Millisekunder(const SokSvar& svar) {
    return static_cast<double>(svar.tid.count()) / 1000.0;
}

std::string Forbehall(int spel, const SokSvar& svar) {
    if (!svar.inomForsoket || svar.utfall == Utfall::Vinnbar)
        return "";
    return std::string(" within this deal (") + SpelNamn(spel) + "'s new attempt shuffles)";
}

} // namespace

int LosEnGiv(int spel, unsigned fro, const SokGranser& granser, std::FILE* ut) {
    const SpelRegler& regler = *ReglerFor(spel);
    auto bord = GivFor(spel, fro);
    SokSvar svar = Los(regler, *bord, granser);
    std::fprintf(ut, "%s, seed %u: %s%s (%" PRIu64 " positions, %.1f ms)\n", SpelNamn(spel), fro,
                 UtfallNamn(svar.utfall), Forbehall(spel, svar).c_str(), svar.lagen,
                 Millisekunder(svar));
    int nr = 0;
    for (const Drag& d : svar.drag) {
        std::fprintf(ut, "%d. %s\n", ++nr, DragIOrd(regler, *bord, d).c_str());
        regler.GorDrag(*bord, d, nullptr);
    }
    switch (svar.utfall) {
    case Utfall::Vinnbar:
        return 0;
    case Utfall::Ovinnbar:
        return 1;
    case Utfall::Okant:
        break;
    }
    return 2;
}

int LosGivar(int spel, unsigned forsta, unsigned sista, const SokGranser& granser, std::FILE* ut) {
    int antal[3] = {0, 0, 0};
    std::uint64_t lagen = 0;
    double ms = 0;
    for (unsigned fro = forsta;; ++fro) {
        auto bord = GivFor(spel, fro);
        SokSvar svar = Los(*ReglerFor(spel), *bord, granser);
        ++antal[static_cast<int>(svar.utfall)];
        lagen += svar.lagen;
        ms += Millisekunder(svar);
        std::fprintf(ut, "seed %u: %s%s, %zu moves, %" PRIu64 " positions, %.1f ms\n", fro,
                     UtfallNamn(svar.utfall), Forbehall(spel, svar).c_str(), svar.drag.size(),
                     svar.lagen, Millisekunder(svar));
        if (fro == sista)
            break;
    }
    std::fprintf(ut,
                 "%s, %d deals: %d won-able, %d cannot be won, %d not known; %" PRIu64
                 " positions, %.1f ms\n",
                 SpelNamn(spel), antal[0] + antal[1] + antal[2], antal[0], antal[1], antal[2],
                 lagen, ms);
    return 0;
}

unsigned VinnbarFro(unsigned bas, int forsok) {
    return bas + static_cast<unsigned>(forsok);
}

SokGranser VinnbarGranser() {
    SokGranser granser;
    granser.lagen = kVinnbarLagen;
    return granser;
}

VinnbarGiv HittaVinnbarGiv(int spel, unsigned bas) {
    auto slut = std::chrono::steady_clock::now() + kVinnbarTid;
    VinnbarGiv giv;
    while (giv.forsok < kVinnbarForsok) {
        giv.fro = VinnbarFro(bas, giv.forsok++);
        auto bord = GivFor(spel, giv.fro);
        if (Los(*ReglerFor(spel), *bord, VinnbarGranser()).utfall == Utfall::Vinnbar) {
            giv.hittad = true;
            break;
        }
        if (std::chrono::steady_clock::now() >= slut)
            break;
    }
    return giv;
}

std::string VinnbarText(int spel, const VinnbarGiv& giv) {
    if (giv.hittad)
        return "Deal " + std::to_string(giv.forsok) + " of " + std::to_string(giv.forsok) +
               " tried can be won";
    return "None of the " + std::to_string(giv.forsok) + " deals of " + SpelNamn(spel) +
           " tried could be shown to be winnable in time: this one is dealt, and it may not be";
}

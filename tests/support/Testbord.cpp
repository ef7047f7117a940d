#include "support/Testbord.h"

#include "platform/SystemTime.h"

#include <cstdlib>

HiscoreLista LasHiscore(int spelNr) {
    HiscoreLista tabell = TomTabell(HiscoreFamiljFor(spelNr));
    ssize_t last = AttributeStore::Program().ReadAttr(HiscoreAttributNamn(spelNr).c_str(),
                                                      B_RAW_TYPE, 0, tabell.data(), sizeof tabell);
    if (!QTest::qVerify(last == static_cast<ssize_t>(sizeof tabell), "a whole table stored", "",
                        __FILE__, __LINE__))
        return TomTabell(HiscoreFamiljFor(spelNr));
    return tabell;
}

void SnabbKlocka() {
    static bigtime_t nu = 0;
    SattKlocka([] { return nu += 25000; });
}

std::vector<Kort> BlandadLek(unsigned fro, const std::function<void(Kortlek&)>& fore,
                             const std::function<void(Kortlek&)>& efter) {
    std::srand(fro);
    Kortlek lek;
    if (fore)
        fore(lek);
    lek.Blanda();
    if (efter)
        efter(lek);
    std::vector<Kort> kort;
    while (lek.AntalKortKvar() > 0)
        kort.push_back(lek.GeKort());
    return kort;
}

int TalEfterGivet(unsigned fro, int w, bool blandat) {
    std::srand(fro);
    for (int i = 0; i < (blandat ? 2 * 999 : 0) + 4 * (w / 5) * 3; ++i)
        std::rand();
    return std::rand();
}

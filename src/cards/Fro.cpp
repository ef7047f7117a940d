#include "cards/Fro.h"

#include <cstdint>
#include <cstdlib>

void MedFro(unsigned fro, const std::function<void()>& gor) {
    // rand() draws from random()'s generator, and 128 bytes of state are the ones srand
    // seeds: a state of our own seeded with `fro` draws what srand(fro) would, and the
    // program's own state is put back untouched afterwards.
    alignas(std::int32_t) static char tillstand[128];
    char* programmets = initstate(fro, tillstand, sizeof tillstand);
    gor();
    setstate(programmets);
}

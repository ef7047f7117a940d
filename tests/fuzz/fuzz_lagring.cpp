// Arbitrary bytes as the program's stored attributes — hiscore tables of any size and type
// with names lacking their NUL, window frames with NaN or huge edges, player names of any
// bytes — read, ranked against a new result, shown as hiscore rows and used as frames.
// Nothing may crash or read out of bounds, and every row stays within 60 characters.
#include "app/FonsterRam.h"
#include "cards/Hiscore.h"
#include "cards/HiscoreRader.h"
#include "platform/AttributeStore.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// The characters of a UTF-8 text: every byte that does not continue one.
size_t AntalTecken(const std::string& text) {
    size_t antal = 0;
    for (unsigned char c : text)
        antal += (c & 0xc0) != 0x80 ? 1 : 0;
    return antal;
}

// Takes bytes off the front of the input.
struct Bytes {
    const uint8_t* data;
    size_t size;

    uint8_t Byte() {
        if (size == 0)
            return 0;
        --size;
        return *data++;
    }
    int32_t Int() {
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i)
            v = (v << 8) | Byte();
        return static_cast<int32_t>(v);
    }
    std::string Take(size_t n) {
        n = std::min(n, size);
        std::string s(reinterpret_cast<const char*>(data), n);
        data += n;
        size -= n;
        return s;
    }
};

AttributeStore& Store() {
    static std::string folder = [] {
        char mall[] = "/tmp/fjolk-fuzz-XXXXXX";
        const char* dir = mkdtemp(mall);
        return std::string(dir != nullptr ? dir : "/tmp/fjolk-fuzz");
    }();
    static AttributeStore store(folder);
    return store;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Bytes in{data, size};
    AttributeStore& store = Store();
    int spelNr = in.Byte() % 12;
    std::string namn = HiscoreAttributNamn(spelNr);

    // A table of any length, usually of the right one, under the right type or another.
    uint8_t form = in.Byte();
    size_t langd = (form & 1) ? 1920 : in.Byte() * 16u;
    std::string tabell = in.Take(langd);
    tabell.resize(langd, static_cast<char>(in.Byte()));
    type_code typ = (form & 2) ? B_RAW_TYPE : B_RECT_TYPE;
    store.WriteAttr(namn.c_str(), typ, 0, tabell.data(), tabell.size());

    // A new result from any counts, any name and any start time.
    HiscoreResultat resultat{in.Int(), in.Int()};
    int angra = in.Int();
    std::string spelare = in.Take(in.Byte() % 40);
    char spelarNamn[20] = {};
    std::memcpy(spelarNamn, spelare.data(), std::min<size_t>(spelare.size(), 19));
    bigtime_t start = system_time() - static_cast<bigtime_t>(in.Int()) * 1000;
    int plats = AddHiscore(store, spelNr, resultat, angra, spelarNamn, start, in.Int());
    if (plats < 1 || plats > 41 || angra > 999)
        std::abort();

    // Whatever was stored under the table's name, a table is there now (what was not one was
    // kept aside), and its rows are what the list would show.
    HiscoreLista lista;
    if (store.ReadAttr(namn.c_str(), B_RAW_TYPE, 0, lista.data(), sizeof lista) != 1920)
        std::abort();
    for (int i = 0; i < kHiscorePlatser; ++i)
        if (AntalTecken(HiscoreRad(i, lista[i], spelNr)) > 60)
            std::abort();

    // A frame of any sixteen bytes, and the frame the window would open at.
    std::string ram = in.Take(16);
    ram.resize(16, '\0');
    store.WriteAttr("FJOLK:FirstWindow", B_RECT_TYPE, 0, ram.data(), 16);
    BRect fonster = GetWindowSize(store, BRect(0, 0, 1023, 767));
    if (!RimligRam(fonster))
        std::abort();
    return 0;
}

#include "cards/VantandeResultat.h"

#include "platform/Notices.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <set>

namespace {

uint32_t Kontrollsumma(const std::string& text) {
    uint32_t h = 2166136261u;
    for (unsigned char c : text)
        h = (h ^ c) * 16777619u;
    return h;
}

// The journal, opened and locked against the other running programs for as long as this
// lives; not open when it cannot be had at once.
class Journal {
public:
    Journal(const std::string& fil, bool skapa) {
        if (fil.empty())
            return;
        int flaggor = O_RDWR | O_CLOEXEC | (skapa ? O_CREAT : 0);
        fd = open(fil.c_str(), flaggor, 0644);
        if (fd >= 0 && flock(fd, LOCK_EX | LOCK_NB) != 0) {
            close(fd);
            fd = -1;
        }
    }
    ~Journal() {
        if (fd >= 0)
            close(fd);
    }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    bool Oppen() const { return fd >= 0; }

    std::vector<Resultatpost> Las() const {
        std::vector<Resultatpost> poster;
        std::string text;
        char buffer[4096];
        ssize_t n;
        off_t pos = 0;
        while ((n = pread(fd, buffer, sizeof buffer, pos)) > 0) {
            text.append(buffer, static_cast<size_t>(n));
            pos += n;
        }
        size_t start = 0;
        for (size_t slut; (slut = text.find('\n', start)) != std::string::npos; start = slut + 1) {
            Resultatpost post;
            if (VantandeResultat::LasJournalRad(text.substr(start, slut - start), &post))
                poster.push_back(post);
        }
        return poster;
    }

    bool Lagg(const Resultatpost& post) {
        std::string rad = VantandeResultat::JournalRad(post) + "\n";
        off_t slut = lseek(fd, 0, SEEK_END);
        if (slut < 0)
            return false;
        // After a line cut short by a crash the record starts a line of its own.
        char sista = '\n';
        if (slut > 0 && pread(fd, &sista, 1, slut - 1) == 1 && sista != '\n')
            rad.insert(rad.begin(), '\n');
        if (pwrite(fd, rad.data(), rad.size(), slut) != static_cast<ssize_t>(rad.size()) ||
            fdatasync(fd) != 0) {
            // What was written of it is no record; the file is left as it was.
            [[maybe_unused]] int kvar = ftruncate(fd, slut);
            return false;
        }
        return true;
    }

    bool Tom() { return ftruncate(fd, 0) == 0 && fdatasync(fd) == 0; }

private:
    int fd = -1;
};

constexpr const char* kInforda = "FJOLK:Inforda";
constexpr size_t kMestInforda = 256;

// The ids of the journal's results last entered, kept in the store and written in the
// transaction that enters them: a run that ends between that transaction and emptying the
// journal leaves results the next run must not enter again.
bool LasInforda(HiscoreStore& store, std::vector<uint64_t>* inforda) {
    type_code typ = 0;
    size_t storlek = 0;
    if (!store.StatAttr(kInforda, &typ, &storlek))
        return true;
    if (typ != B_RAW_TYPE || storlek % sizeof(uint64_t) != 0 ||
        storlek > kMestInforda * sizeof(uint64_t))
        return true;
    inforda->resize(storlek / sizeof(uint64_t));
    return store.ReadAttr(kInforda, B_RAW_TYPE, 0, inforda->data(), storlek) ==
           static_cast<ssize_t>(storlek);
}

bool SkrivInforda(HiscoreStore& store, std::vector<uint64_t> inforda) {
    if (inforda.size() > kMestInforda)
        inforda.erase(inforda.begin(),
                      inforda.begin() + static_cast<std::ptrdiff_t>(inforda.size() - kMestInforda));
    size_t storlek = inforda.size() * sizeof(uint64_t);
    return store.WriteAttr(kInforda, B_RAW_TYPE, 0, inforda.data(), storlek) ==
           static_cast<ssize_t>(storlek);
}

} // namespace

VantandeResultat::VantandeResultat(std::string fil) : journalFil(std::move(fil)) {}

std::string VantandeResultat::JournalRad(const Resultatpost& p) {
    char huvud[160];
    std::snprintf(huvud, sizeof huvud,
                  "R2 %016" PRIx64 " %d %d %d %d %d %d %d %d %" PRId64 " %" PRId64 " ", p.id,
                  p.spelNr, p.resultat.kort, p.resultat.giv, p.angra, p.mm, p.ss,
                  p.resultat.vunnen ? 1 : 0, p.resultat.iStatistiken ? 1 : 0, p.sekunder, p.nar);
    std::string rad = huvud;
    const auto* bytes = reinterpret_cast<const unsigned char*>(&p.post);
    static const char* const hex = "0123456789abcdef";
    for (size_t i = 0; i < sizeof p.post; ++i) {
        rad += hex[bytes[i] >> 4];
        rad += hex[bytes[i] & 15];
    }
    char summa[16];
    std::snprintf(summa, sizeof summa, " %08x", Kontrollsumma(rad));
    return rad + summa;
}

bool VantandeResultat::LasJournalRad(const std::string& rad, Resultatpost* p) {
    constexpr size_t kHex = 2 * sizeof(HighScoreTable);
    if (rad.size() < kHex + 12)
        return false;
    std::string kropp = rad.substr(0, rad.size() - 9);
    unsigned summa = 0;
    if (rad[rad.size() - 9] != ' ' ||
        std::sscanf(rad.c_str() + rad.size() - 8, "%8x", &summa) != 1 ||
        summa != Kontrollsumma(kropp))
        return false;
    Resultatpost post;
    int langd = 0;
    int vunnen = 0;
    int iStatistiken = 1;
    if (kropp.starts_with("R1 ")) {
        // Written before results carried their statistics: counted as played, not won.
        if (std::sscanf(kropp.c_str(), "R1 %16" SCNx64 " %d %d %d %d %d %d %n", &post.id,
                        &post.spelNr, &post.resultat.kort, &post.resultat.giv, &post.angra,
                        &post.mm, &post.ss, &langd) != 7)
            return false;
        post.sekunder = int64_t{post.mm} * 60 + post.ss;
    } else if (std::sscanf(kropp.c_str(),
                           "R2 %16" SCNx64 " %d %d %d %d %d %d %d %d %" SCNd64 " %" SCNd64 " %n",
                           &post.id, &post.spelNr, &post.resultat.kort, &post.resultat.giv,
                           &post.angra, &post.mm, &post.ss, &vunnen, &iStatistiken, &post.sekunder,
                           &post.nar, &langd) != 11) {
        return false;
    }
    if (kropp.size() != static_cast<size_t>(langd) + kHex)
        return false;
    post.resultat.vunnen = vunnen != 0;
    post.resultat.iStatistiken = iStatistiken != 0;
    auto* bytes = reinterpret_cast<unsigned char*>(&post.post);
    for (size_t i = 0; i < sizeof post.post; ++i) {
        unsigned varde = 0;
        if (std::sscanf(kropp.c_str() + langd + 2 * i, "%2x", &varde) != 1)
            return false;
        bytes[i] = static_cast<unsigned char>(varde);
    }
    if (post.spelNr < 0 || post.spelNr > 11)
        return false;
    *p = post;
    return true;
}

size_t VantandeResultat::BaraIMinnet() const {
    std::lock_guard<std::mutex> vakt(las);
    return static_cast<size_t>(
        std::count_if(minne.begin(), minne.end(), [](const Vantande& v) { return !v.iJournal; }));
}

size_t VantandeResultat::Antal() const {
    std::lock_guard<std::mutex> vakt(las);
    size_t antal = 0;
    for (const Vantande& v : minne)
        antal += v.iJournal ? 0 : 1;
    struct stat st {};
    if (journalFil.empty() || stat(journalFil.c_str(), &st) != 0 || st.st_size == 0)
        return antal;
    Journal journal(journalFil, false);
    if (journal.Oppen())
        return antal + journal.Las().size();
    // Another program is entering them just now.
    return antal + static_cast<size_t>(std::count_if(minne.begin(), minne.end(),
                                                     [](const Vantande& v) { return v.iJournal; }));
}

int VantandeResultat::ForIn(HiscoreStore& store, const Resultatpost* ny) {
    std::lock_guard<std::mutex> vakt(las);
    struct stat st {};
    bool journalFinns = !journalFil.empty() && stat(journalFil.c_str(), &st) == 0 && st.st_size > 0;
    if (ny == nullptr && minne.empty() && !journalFinns)
        return kHiscoreVantar;

    auto journal = std::make_unique<Journal>(journalFinns ? journalFil : std::string(), false);
    std::vector<Resultatpost> samla;
    std::set<uint64_t> franJournalen;
    if (journal->Oppen()) {
        samla = journal->Las();
        for (const Resultatpost& p : samla)
            franJournalen.insert(p.id);
        // What left the journal was entered by another program.
        std::erase_if(minne, [&](const Vantande& v) {
            return v.iJournal && franJournalen.count(v.post.id) == 0;
        });
    }
    for (const Vantande& v : minne)
        if (!v.iJournal)
            samla.push_back(v.post);
    if (ny != nullptr)
        samla.push_back(*ny);
    if (samla.empty())
        return kHiscoreVantar;

    int plats = kHiscoreVantar;
    int vantat = 0;
    std::vector<std::string> notiser;
    // A store that could not be had before is tried again.
    status_t status = store.Exclusive([&] {
        notiser.clear();
        vantat = 0;
        std::vector<uint64_t> inforda;
        if (!franJournalen.empty() && !LasInforda(store, &inforda))
            return false;
        for (const Resultatpost& p : samla) {
            // Entered by a run that ended before it could empty the journal.
            if (std::find(inforda.begin(), inforda.end(), p.id) != inforda.end())
                continue;
            int dennaPlats = 0;
            if (!ForInResultat(store, p, &dennaPlats, &notiser))
                return false;
            if (ny != nullptr && p.id == ny->id)
                plats = dennaPlats;
            else
                ++vantat;
            if (franJournalen.count(p.id) != 0)
                inforda.push_back(p.id);
        }
        return franJournalen.empty() || SkrivInforda(store, inforda);
    });
    if (status == B_OK) {
        for (const std::string& notis : notiser)
            Notify(notis);
        // The player was told these would be saved; now they are.
        if (vantat == 1)
            Notify("Your result that waited for the store was saved.", false);
        else if (vantat > 1)
            Notify("Your " + std::to_string(vantat) +
                       " results that waited for the store were saved.",
                   false);
        std::erase_if(minne, [&](const Vantande& v) { return !v.iJournal || journal->Oppen(); });
        if (journal->Oppen() && !journal->Tom())
            Notify("the journal of results waiting to be saved, " + journalFil +
                   ", could not be emptied; its results may be entered twice.");
        return plats;
    }
    if (ny == nullptr)
        return kHiscoreVantar;
    Vantande vantar{*ny, false};
    if (!journal->Oppen()) {
        journal.reset();
        journal = std::make_unique<Journal>(journalFil, true);
    }
    if (journal->Oppen())
        vantar.iJournal = journal->Lagg(*ny);
    minne.push_back(vantar);
    return kHiscoreVantar;
}

VantandeResultat& VantandeResultat::For(const std::string& dataDirectory) {
    static std::mutex allasLas;
    static std::map<std::string, std::unique_ptr<VantandeResultat>> alla;
    std::lock_guard<std::mutex> vakt(allasLas);
    std::unique_ptr<VantandeResultat>& vantande = alla[dataDirectory];
    if (!vantande)
        vantande = std::make_unique<VantandeResultat>(
            dataDirectory.empty() ? std::string() : dataDirectory + "/" + kJournalNamn);
    return *vantande;
}

bool ForInVantande(AttributeStore& store) {
    VantandeResultat& vantande = VantandeResultat::For(store.DataDirectory());
    std::unique_ptr<HiscoreStore> lager = HiscoreLager(store);
    vantande.ForIn(*lager, nullptr);
    return vantande.Antal() == 0;
}

#pragma once

#include "cards/Hiscore.h"
#include "platform/AttributeStore.h"

#include <ctime>
#include <string>

// Passes everything on to the real store and notes what the procedure asked of it.
class Vakt : public HiscoreStore {
public:
    explicit Vakt(AttributeStore& store) : lager(store) {}
    status_t InitCheck() const override { return lager.InitCheck(); }
    ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                     size_t length) override {
        ++lasningar;
        utanforTransaktion |= djup == 0;
        return lager.ReadAttr(name, type, offset, buffer, length);
    }
    ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                      size_t length) override {
        if (full)
            return B_DEVICE_FULL;
        ++skrivningar;
        utanforTransaktion |= djup == 0;
        senastNamn = name;
        senastTyp = type;
        senastLangd = length;
        return lager.WriteAttr(name, type, offset, buffer, length);
    }
    status_t Sync() override {
        ++syncar;
        return lager.Sync();
    }
    bool StatAttr(const char* name, type_code* type, size_t* size) override {
        return lager.StatAttr(name, type, size);
    }
    status_t RenameAttr(const char* from, const char* to) override {
        ++skrivningar;
        utanforTransaktion |= djup == 0;
        return lager.RenameAttr(from, to);
    }
    status_t Exclusive(const std::function<bool()>& work) override {
        ++transaktioner;
        ++djup;
        status_t status = lager.Exclusive(work);
        --djup;
        return status;
    }
    status_t ReadStatistics(int game, const std::string& player, StatisticsRow* row) override {
        ++statistikLasningar;
        utanforTransaktion |= djup == 0;
        return lager.ReadStatistics(game, player, row);
    }
    status_t WriteStatistics(const StatisticsRow& row) override {
        if (full)
            return B_DEVICE_FULL;
        ++statistikSkrivningar;
        utanforTransaktion |= djup == 0;
        return lager.WriteStatistics(row);
    }
    bool StatisticsDamaged() override { return lager.StatisticsDamaged(); }
    status_t RebuildStatistics(std::string* keptAs) override {
        ++statistikSkrivningar;
        utanforTransaktion |= djup == 0;
        return lager.RebuildStatistics(keptAs);
    }
    std::string DataDirectory() const override { return lager.DataDirectory(); }

    // While set, every write fails as on a full disk.
    bool full = false;
    int lasningar = 0;
    int skrivningar = 0;
    int syncar = 0;
    int transaktioner = 0;
    // The statistics table's, apart from the attributes'.
    int statistikLasningar = 0;
    int statistikSkrivningar = 0;
    bool utanforTransaktion = false;
    std::string senastNamn;
    type_code senastTyp = 0;
    size_t senastLangd = 0;

private:
    AttributeStore& lager;
    int djup = 0;
};

// Noon of a day in local time: a date a hiscore entry or a statistics row records.
inline std::time_t Datum(int dag, int manad, int ar) {
    std::tm tm{};
    tm.tm_mday = dag;
    tm.tm_mon = manad - 1;
    tm.tm_year = ar - 1900;
    tm.tm_hour = 12;
    tm.tm_isdst = -1;
    return std::mktime(&tm);
}

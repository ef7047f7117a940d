#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// The tables a search has seen, by their keys: open addressing over a hash and an offset
// into one growing block of key bytes, so a key costs its own bytes and a dozen more.
// Keys are compared whole: two tables are never taken for one by a clash of hashes.
class Nyckeltabell {
public:
    Nyckeltabell();
    // Adds `nyckel`; false when it was there already.
    bool LaggTill(std::string_view nyckel);
    std::size_t Antal() const { return antal; }
    // The bytes the table holds now.
    std::size_t Minne() const;

private:
    struct Post {
        std::uint64_t hash = 0;
        std::uint64_t plats = 0; // 0: empty; else 1 + offset into `bytes`
    };
    void Vaxa();
    bool Samma(const Post& post, std::string_view nyckel) const;

    std::vector<Post> poster;
    std::vector<char> bytes;
    std::size_t antal = 0;
};

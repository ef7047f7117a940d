#include "solver/Nyckeltabell.h"

#include <cstring>

namespace {

std::uint64_t Blanda(std::uint64_t h) {
    h ^= h >> 29;
    h *= 0xbf58476d1ce4e5b9ull;
    h ^= h >> 32;
    return h;
}

// Eight bytes at a time, each word mixed in by a multiplication; the length goes in too.
std::uint64_t Hash(std::string_view s) {
    std::uint64_t h = 0x9e3779b97f4a7c15ull ^ s.size();
    std::size_t i = 0;
    for (; i + 8 <= s.size(); i += 8) {
        std::uint64_t w = 0;
        std::memcpy(&w, s.data() + i, 8);
        h = (h ^ w) * 0xff51afd7ed558ccdull;
        h ^= h >> 31;
    }
    if (i < s.size()) {
        std::uint64_t w = 0;
        std::memcpy(&w, s.data() + i, s.size() - i);
        h = (h ^ w) * 0xff51afd7ed558ccdull;
    }
    return Blanda(h);
}

} // namespace

Nyckeltabell::Nyckeltabell() : poster(1 << 10) {}

std::size_t Nyckeltabell::Minne() const {
    return poster.capacity() * sizeof(Post) + bytes.capacity();
}

bool Nyckeltabell::Samma(const Post& post, std::string_view nyckel) const {
    const char* p = bytes.data() + (post.plats - 1);
    std::uint16_t langd = 0;
    std::memcpy(&langd, p, sizeof langd);
    return langd == nyckel.size() && std::memcmp(p + sizeof langd, nyckel.data(), langd) == 0;
}

bool Nyckeltabell::LaggTill(std::string_view nyckel) {
    if ((antal + 1) * 4 > poster.size() * 3)
        Vaxa();
    std::uint64_t h = Hash(nyckel);
    std::size_t mask = poster.size() - 1;
    for (std::size_t i = h & mask;; i = (i + 1) & mask) {
        Post& post = poster[i];
        if (post.plats == 0) {
            auto langd = static_cast<std::uint16_t>(nyckel.size());
            post.hash = h;
            post.plats = bytes.size() + 1;
            const std::size_t fore = bytes.size();
            bytes.resize(fore + sizeof langd + nyckel.size());
            std::memcpy(bytes.data() + fore, &langd, sizeof langd);
            std::memcpy(bytes.data() + fore + sizeof langd, nyckel.data(), nyckel.size());
            ++antal;
            return true;
        }
        if (post.hash == h && Samma(post, nyckel))
            return false;
    }
}

void Nyckeltabell::Vaxa() {
    std::vector<Post> gamla(poster.size() * 2);
    gamla.swap(poster);
    std::size_t mask = poster.size() - 1;
    for (const Post& post : gamla) {
        if (post.plats == 0)
            continue;
        std::size_t i = post.hash & mask;
        while (poster[i].plats != 0)
            i = (i + 1) & mask;
        poster[i] = post;
    }
}

#pragma once

#include <functional>

// Runs `gor` with the random numbers seeded by `fro` exactly as the start seeds them (so
// that a deal made in it is the one --seed with that number deals), then lets the random
// numbers go on from where they were: the random deals after it are those the one seeding
// at start gives, as if `gor` had never run.
void MedFro(unsigned fro, const std::function<void()>& gor);

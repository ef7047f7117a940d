#pragma once

// For measuring start-up (bench/startup.sh): with FJOLK_STARTUP_PROBE set in the
// environment, the program prints the wall-clock time of its first painted frame — of the
// welcome screen, or of the game when one is started from the command line — as
// "first-paint <seconds since the epoch>" and quits.
void MatForstaBilden(bool spel);

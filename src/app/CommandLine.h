#pragma once

#include <QStringList>

#include <optional>
#include <string>
#include <utility>

// What the player asked for on the command line.
struct CommandLine {
    std::optional<unsigned> seed;
    std::string dataDirectory;
    // Game number to deal at once, or -1.
    int game = -1;
    // Cards move at once instead of flying (the "Animation" option, for this run).
    bool noAnimation = false;
    // A table size for the snapshot, and the picture file to write it to.
    int width = 640;
    int height = 480;
    // The snapshot's device pixel ratio; the screen's when not given.
    std::optional<double> ratio;
    std::string snapshot;
    // Search the deal (or the deals of seeds firstSeed..lastSeed) instead of opening a
    // window; 0 positions: no limit.
    bool solve = false;
    std::optional<std::pair<unsigned, unsigned>> seeds;
    unsigned long long limit = 0;
    // The "Winnable Deals Only" option on for this run.
    bool winnableOnly = false;

    enum class Outcome { Run, Exit };
    Outcome outcome = Outcome::Run;
    int exitCode = 0;
    // Text for standard output (help, version) or, with a non-zero exit code, for stderr.
    QString message;
};

// Parses the arguments (the program name first). Bad values ask to exit with code 2.
CommandLine ParseCommandLine(const QStringList& arguments);

// The arguments without the options that Qt's application object takes for itself
// (-platform offscreen, -style fusion, -reverse, ...), so that they can be parsed as ours
// before any display is opened.
QStringList UtanQtsVal(const QStringList& arguments);

#pragma once

// The program's options, in the order --help lists them. The parser and the manual page
// (tools/manpage.cpp) are both made from this table, so they cannot drift apart. Plain C++:
// the manual page is written by a build-time tool without Qt.
struct Option {
    // One letter, or nullptr.
    const char* shortName;
    const char* name;
    // The placeholder of the option's value, or nullptr for an option without one.
    const char* valueName;
    const char* description;
};

// Follows "Fjolks Patience VERSION: " in --help, the version being the build's.
inline constexpr const char* kProgramDescription =
    "twelve patience card games with hiscore tables.";

inline constexpr Option kOptions[] = {
    {"h", "help", nullptr, "Show this help and exit."},
    {"v", "version", nullptr, "Show the version and exit."},
    {nullptr, "seed", "N",
     "Shuffle with random numbers seeded by N instead of the current time, so that a deal "
     "can be played again exactly. (Idioten 2's first deal is never shuffled: its deal N is "
     "the one \"Deal Number...\" deals.)"},
    {nullptr, "data-dir", "DIR",
     "Keep window frames, player name and hiscores in DIR instead of the user's data "
     "folder."},
    {nullptr, "game", "N", "Deal game N (0 to 11) at once."},
    {nullptr, "no-animation", nullptr,
     "Start with the \"Animation\" option off: cards move at once."},
    {nullptr, "size", "WxH", "The table's size for --snapshot, e.g. 640x480 (at most 1280x1024)."},
    {nullptr, "ratio", "R",
     "The pixels of --snapshot to each unit of the table, each way: 2 draws it as a screen of "
     "device pixel ratio 2 shows it, twice as wide and high (1 to 4; by default the "
     "screen's)."},
    {nullptr, "snapshot", "FILE",
     "Deal the game of --game, draw the table without a display and write it to FILE as a "
     "PNG picture, then exit."},
    {nullptr, "solve", nullptr,
     "Without a window, search the deal of --game and --seed (the one \"Deal Number...\" "
     "deals for that number) for a way to win it and print "
     "the verdict (won-able, cannot be won, not known), the positions searched, the time and "
     "the winning moves one per line; exit with 0, 1 or 2 for the three verdicts."},
    {nullptr, "seeds", "A-B",
     "With --solve: search the deals of seeds A to B instead, one line each, then the "
     "totals."},
    {nullptr, "limit", "POSITIONS",
     "With --solve: give up, as not known, after searching this many positions."},
    {nullptr, "winnable-only", nullptr,
     "Start with the \"Winnable Deals Only\" option on for this run: every deal is dealt "
     "again until the solver proves it can be won, trying at most 100 deals or about four "
     "seconds, after which the last deal tried is played and the window says so (also for "
     "--snapshot and --solve)."},
};

// The keys that play a game on the table, as the manual page and Help list them.
struct KeyHelp {
    const char* keys;
    const char* description;
};

inline constexpr KeyHelp kPlayKeys[] = {
    {"Left, Right", "Move the focus frame to the previous or next place, in reading order."},
    {"Up, Down", "Move the frame to the nearest place in the row above or below."},
    {"Home, End", "Move the frame to the first or last place."},
    {"Enter, Space",
     "Click the place in the frame: the game makes its move, as for a click of the mouse. "
     "While cards are held: put them down here."},
    {".", "Take the card in the frame, as a drag of the mouse takes it; again on the same pile, "
          "one card more with it. Carry the cards with the arrows and put them down with Enter, "
          "Space or \".\"; Enter on the pile they came from clicks the card they were taken by."},
    {"Escape", "Put the held cards back where they were."},
};
// What a screen reader hears while a game is played, as the manual page tells it.
inline constexpr const char* kHorsText =
    "A screen reader (Orca, through AT-SPI) hears the place the frame comes to, by its name and "
    "cards (\"column 3: seven of clubs on eight of hearts, 5 cards\", \"free cell 2: empty\"). "
    "Each move, made with the keys or the mouse, is told as a notification in words (\"seven of "
    "clubs from column 3 to foundation 2\", \"jack of hearts and 2 more from column 3 to column "
    "5\"); cards taken with \".\" as \"holding\" and the card, a key that moves nothing as "
    "\"nothing moved\", Escape as \"put back\", Undo and Redo as \"undo:\" and \"redo:\" before "
    "what they moved. The move that wins is followed by \"won\" and the hiscore alert's text; "
    "a hint or an answer shown on the table is read as it shows. "
    "On the welcome screen each hiscore row is read in its heading's words (\"1. Eva, cards "
    "done 12, undos 5, time to play 05:07, date 3/2 2001\"). Nothing is told while no screen "
    "reader listens.";

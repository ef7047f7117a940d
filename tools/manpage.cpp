// Writes the manual page fjolkpatience.6 from the program's option table, the same table
// --help is made from. Run by the build as: manpage OUTPUT VERSION
#include "app/Options.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace {

// Text for roff: a backslash printed as itself, a dash that starts an option word as a
// minus sign (so that it can be searched and copied), and no line taken for a request.
std::string Roff(const std::string& text) {
    std::string out;
    char before = ' ';
    for (char c : text) {
        if (c == '\\')
            out += "\\e";
        else if (c == '-' && (before == ' ' || before == '-' || before == '('))
            out += "\\-";
        else
            out += c;
        before = c;
    }
    if (!out.empty() && (out[0] == '.' || out[0] == '\''))
        out.insert(0, "\\&");
    return out;
}

// An option's name, every dash a minus sign, as it is typed.
std::string Name(const char* name) {
    std::string out;
    for (const char* c = name; *c != '\0'; ++c)
        out += *c == '-' ? std::string("\\-") : std::string(1, *c);
    return out;
}

std::string OptionHeading(const Option& option) {
    std::string heading;
    if (option.shortName != nullptr)
        heading += "\\fB\\-" + std::string(option.shortName) + "\\fR, ";
    heading += "\\fB\\-\\-" + Name(option.name) + "\\fR";
    if (option.valueName != nullptr)
        heading += " \\fI" + Roff(option.valueName) + "\\fR";
    return heading;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: manpage OUTPUT VERSION\n");
        return 2;
    }
    std::ofstream page(argv[1], std::ios::binary | std::ios::trunc);
    const std::string version = argv[2];
    // "twelve ... tables." is the one-line summary, without its full stop.
    std::string summary = kProgramDescription;
    if (!summary.empty() && summary.back() == '.')
        summary.pop_back();

    page << ".TH FJOLKPATIENCE 6 \"\" \"Fjolks Patience " << version << "\" \"Games\"\n"
         << ".SH NAME\n"
         << "fjolkpatience \\- " << Roff(summary) << "\n"
         << ".SH SYNOPSIS\n"
         << ".B fjolkpatience\n"
         << "[\\fIOPTION\\fR]...\n"
         << ".SH DESCRIPTION\n"
         << "Fjolks Patience is a collection of twelve patience (solitaire) card games in one "
            "window: Idioten 1 and 2, Godnattvalsen, Tower of Hanoi, Kvarnen, "
            "Gl\\(:adjespridaren, Farfars klocka, 13-Pyramiden, Freecell, Eight off, Black "
            "hole and Strategy.\n"
         << "Each game keeps a hiscore table of 40 places.\n"
         << ".PP\n"
         << "Type your name after \"Player = \", click a game once to see its hiscore table "
            "and again to play it.\n"
         << "A click on a card lets the game move it; press and pull to drag it.\n"
         << "The \\(lqHelp\\(rq menu opens the rules of every game.\n"
         << ".PP\n"
         << "In the \\(lqGame\\(rq menu, \\(lqHint\\(rq (key H) outlines a good next move "
            "for a second, \\(lqFinish\\(rq plays the rest of a game that can still be won, "
            "and \\(lqCan This Deal Be Won?\\(rq answers for the table as it is now; a search "
            "runs beside the game and never holds it up.\n"
         << "The Options tab adds \\(lqWinnable Deals Only\\(rq, \\(lqFinish by Itself\\(rq "
            "and \\(lqTell Me When the Deal Is Lost\\(rq, all off until turned on.\n"
         << ".SH OPTIONS\n";
    for (const Option& option : kOptions)
        page << ".TP\n" << OptionHeading(option) << "\n" << Roff(option.description) << "\n";
    page << ".SH KEYS\n"
         << "A game can be played with the keyboard alone: a frame marks a place on the table "
            "(a pile, a free cell, a foundation, the stock or a button), and a screen reader "
            "hears its name and cards.\n";
    for (const KeyHelp& key : kPlayKeys)
        page << ".TP\n.B " << Roff(key.keys) << "\n" << Roff(key.description) << "\n";
    page << ".PP\n" << Roff(kHorsText) << "\n";
    page << ".SH EXIT STATUS\n"
         << "0 when the program ends normally, 1 when a snapshot cannot be drawn or written, "
            "2 for an unknown option or a bad value.\n"
         << ".SH FILES\n"
         << ".TP\n"
         << ".I ~/.local/share/FjolksPatience/fjolk.db\n"
         << "Window frames, the player's name and the hiscore tables, in "
            "\\fI$XDG_DATA_HOME/FjolksPatience\\fR when that is set.\n"
         << ".TP\n"
         << ".I /usr/share/fjolkpatience/Help/Help.html\n"
         << "The rules of every game, shown by the \\(lqHelp\\(rq menu; under another "
            "installation prefix, in its \\fIshare/fjolkpatience/Help\\fR.\n"
         << ".SH EXAMPLES\n"
         << "Deal Idioten 1 with seed 3 and write the table to a picture:\n"
         << ".PP\n"
         << ".EX\n"
         << "fjolkpatience \\-\\-game 0 \\-\\-seed 3 \\-\\-size 640x480 \\-\\-snapshot "
            "table.png\n"
         << ".EE\n";
    page.close();
    if (!page) {
        std::fprintf(stderr, "manpage: cannot write %s\n", argv[1]);
        return 1;
    }
    return 0;
}

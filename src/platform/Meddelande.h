#pragma once

#include "platform/AttributeStore.h"

#include <QEvent>
#include <QString>

#include <utility>

// A command for the window: a posted event that carries a four-character code, as the
// menus, the welcome screen and the play view send them.
class Meddelande : public QEvent {
public:
    explicit Meddelande(type_code kod, QString filNamn = {})
        : QEvent(Typ()), what(kod), fil(std::move(filNamn)) {}

    static QEvent::Type Typ() {
        static const QEvent::Type typ = static_cast<QEvent::Type>(QEvent::registerEventType());
        return typ;
    }

    const type_code what;
    // The chosen file, for the background picture's command; the number asked for, for a
    // numbered deal.
    const QString fil;
};

// The commands, 'AAAA' to 'AAAZ'.
inline constexpr type_code kNyGiv = MakeTypeCode("AAAA");
inline constexpr type_code kAngra = MakeTypeCode("AAAB");
inline constexpr type_code kStang = MakeTypeCode("AAAC");
inline constexpr type_code kStartaSpel0 = MakeTypeCode("AAAD"); // up to 'AAAO' for game 11
inline constexpr type_code kAvsluta = MakeTypeCode("AAAR");
inline constexpr type_code kHjalp = MakeTypeCode("AAAT");
inline constexpr type_code kOm = MakeTypeCode("AAAU");
inline constexpr type_code kValjBakgrund = MakeTypeCode("AAAV");
inline constexpr type_code kBakgrundVald = MakeTypeCode("AAAW");
inline constexpr type_code kRensaBakgrund = MakeTypeCode("AAAX");
inline constexpr type_code kAterstall = MakeTypeCode("AAAY");
inline constexpr type_code kAnimering = MakeTypeCode("AAAZ");

// Commands the old program did not have, with codes of their own.
inline constexpr type_code kGorOm = MakeTypeCode("FPGO");          // "Redo"
inline constexpr type_code kOmGiv = MakeTypeCode("FPOG");          // "Restart Deal"
inline constexpr type_code kFragaGivNummer = MakeTypeCode("FPFN"); // "Deal Number…"
inline constexpr type_code kGivNummer = MakeTypeCode("FPGN");      // the number, in `fil`
inline constexpr type_code kStatistik = MakeTypeCode("FPST");      // "Statistics…"
inline constexpr type_code kFragaNollstall = MakeTypeCode("FPFS"); // "Reset Statistics…"

// The game-finished notice the play view posts to its window is "New Deal" itself.
inline constexpr type_code kSpelKlart = kNyGiv;
// The drag message: the window accepts it and does nothing with it.
inline constexpr type_code kDragMeddelande = MakeTypeCode("DGAD");

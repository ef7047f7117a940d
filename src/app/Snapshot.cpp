#include "app/Snapshot.h"

#include "app/FjolkView.h"
#include "games/Spelfabrik.h"
#include "platform/QtGeometry.h"

#include <cstdio>

int SparaBild(int spelNr, int bredd, int hojd, const std::string& fil, std::optional<double> kvot,
              std::optional<unsigned> fro) {
    FjolkView view;
    if (kvot)
        view.SattPixelKvot(*kvot);
    view.resize(bredd, hojd);
    view.SattSpel(SkapaSpel(spelNr, &view, view.Bounds(), false));
    if (view.Spel() == nullptr) {
        std::fprintf(stderr, "fjolkpatience: %s (game %d) is not built yet.\n", SpelNamn(spelNr),
                     spelNr);
        return 1;
    }
    if (fro)
        view.GivAvFro(*fro);
    QImage bild = view.OffBitmap().copy(TillPixlar(QRect(0, 0, bredd, hojd), view.PixelKvot()));
    if (!bild.save(QString::fromStdString(fil), "PNG")) {
        std::fprintf(stderr, "fjolkpatience: cannot write %s.\n", fil.c_str());
        return 1;
    }
    return 0;
}

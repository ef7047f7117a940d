// The play view's work at the largest table: a full redraw of a game in the middle of
// play, one pointer move while cards are dragged, and a whole deal without animation. On a
// screen of another pixel ratio (QT_SCALE_FACTOR=2) the view draws at that ratio, and the
// label says which.
#include "app/FjolkView.h"
#include "games/KolumnSpel.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "support/Gester.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <vector>

namespace {

void Etikett(benchmark::State& state, const FjolkView& vy) {
    state.SetLabel(std::string(SpelNamn(static_cast<int>(state.range(0)))) + ", ratio " +
                   std::to_string(vy.PixelKvot()).substr(0, 4));
}

// A game at 1280 × 1024 after a dozen real clicks on its cards.
std::unique_ptr<FjolkView> MittISpelet(int spelNr) {
    auto vy = VyMedSpel(spelNr, 7, 1280, 1024);
    const auto& luckor = vy->Spel()->Luckor();
    for (int i = 0; i < 12; ++i)
        KlickaPa(*vy, Mitt(luckor[(i * 7) % luckor.size()].GePos()));
    return vy;
}

void HelOmritning(benchmark::State& state) {
    auto vy = MittISpelet(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        vy->InvalidateOffscreen();
        benchmark::DoNotOptimize(vy->OffBitmap().constBits());
    }
    Etikett(state, *vy);
}

// The same with a background picture: the background buffer is copied under the table.
void HelOmritningMedBild(benchmark::State& state) {
    auto vy = MittISpelet(static_cast<int>(state.range(0)));
    QImage bild(64, 48, QImage::Format_RGB32);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.setPixel(x, y, qRgb(x * 4, y * 5, 128));
    vy->SattBakgrundsBild(bild);
    for (auto _ : state) {
        vy->InvalidateOffscreen();
        benchmark::DoNotOptimize(vy->OffBitmap().constBits());
    }
    Etikett(state, *vy);
}

// The timed pointer moves of a drag under way, each with what the window system does for
// it, then the release.
void DraSteg(benchmark::State& state, FjolkView& vy, BPoint start) {
    QCoreApplication::processEvents();
    int steg = 0;
    for (auto _ : state) {
        QPointF p(start.x + 30 + (steg % 200), start.y + 30 + (steg % 150));
        ++steg;
        QMouseEvent move(QEvent::MouseMove, p, vy.mapToGlobal(p), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&vy, &move);
        // The move puts the cards' own window at the pointer; its events are the rest.
        QCoreApplication::processEvents();
    }
    QTest::mouseRelease(&vy, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
}

// Where a press picks cards up: the start of a legal move that is made by dragging, else
// (a game whose moves are all made by clicks may still lift a card) the card a legal move
// takes, else the first card.
BPoint DragbartKort(const Patiens& spel) {
    const std::vector<Drag> dragen = spel.Regler().LagligaDrag(spel.Tabell());
    for (const Drag& drag : dragen) {
        std::optional<Gest> gest = spel.GestFor(drag);
        if (gest && !gest->klick)
            return gest->fran;
    }
    const auto& luckor = spel.Luckor();
    for (const Drag& drag : dragen)
        if (drag.slag == DragSlag::Kort)
            return Mitt(luckor[drag.fran].GePos());
    size_t kort = 0;
    while (kort < luckor.size() && luckor[kort].Tom())
        ++kort;
    return Mitt(luckor[kort].GePos());
}

// One pointer move of a drag.
void DragSteg(benchmark::State& state) {
    auto vy = MittISpelet(static_cast<int>(state.range(0)));
    BPoint start = DragbartKort(*vy->Spel());
    TryckOchDra(*vy, start, start + BPoint(20, 20));
    if (!vy->drar) {
        state.SkipWithError("no card was picked up");
        return;
    }
    DraSteg(state, *vy, start);
    Etikett(state, *vy);
}

// One pointer move while a run of ten cards is dragged in Freecell.
void DragStegRad10(benchmark::State& state) {
    if (!SpelFinns(8)) {
        state.SkipWithError("Freecell is not built");
        return;
    }
    auto vy = VyMedSpel(8, 7, 1280, 1024);
    auto& spel = dynamic_cast<KolumnSpel&>(*vy->Spel());
    std::vector<Lucka>& luckor = spel.LuckorForTest();
    for (Lucka& l : luckor)
        l.TaBortKort();
    // King of spades down to four of hearts, alternating colours, in the first column.
    for (int i = 0; i < 10; ++i) {
        kortfarg farg =
            i % 2 == 0 ? (i % 4 == 0 ? SPADER : KLOVER) : (i % 4 == 1 ? HJARTER : RUTER);
        luckor[i].TaEmotKort(Kort(farg, 13 - i, BRect()));
    }
    spel.GeKortenFramsidor(luckor);
    vy->InvalidateOffscreen();
    BRect forsta = luckor[0].GePos();
    BPoint start(forsta.left + 20, forsta.top + 10);
    TryckOchDra(*vy, start, start + BPoint(20, 20));
    if (!vy->drar || spel.valdaLuckor.size() != 10) {
        state.SkipWithError("the run was not picked up");
        return;
    }
    DraSteg(state, *vy, start);
    state.SetLabel("ratio " + std::to_string(vy->PixelKvot()).substr(0, 4));
}

void Giv(benchmark::State& state) {
    auto vy = VyMedSpel(static_cast<int>(state.range(0)), 7, 1280, 1024);
    for (auto _ : state)
        vy->Spel()->NyttSpel(vy->Bounds());
    Etikett(state, *vy);
}

void VarjeSpel(benchmark::internal::Benchmark* b) {
    for (int nr = 0; nr < kAntalSpel; ++nr)
        if (SpelFinns(nr))
            b->Arg(nr);
}

BENCHMARK(HelOmritning)->Apply(VarjeSpel)->Unit(benchmark::kMicrosecond);
BENCHMARK(HelOmritningMedBild)->Arg(8)->Unit(benchmark::kMicrosecond);
BENCHMARK(DragSteg)->Apply(VarjeSpel)->Unit(benchmark::kMicrosecond);
BENCHMARK(DragStegRad10)->Unit(benchmark::kMicrosecond);
BENCHMARK(Giv)->Apply(VarjeSpel)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir dir;
    AttributeStore::SetDataDirectory(dir.path().toStdString());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

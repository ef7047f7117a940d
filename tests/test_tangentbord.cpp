#include "app/FjolkView.h"
#include "app/Tangentbord.h"
#include "app/TillgangligtBord.h"
#include "cards/Hiscore.h"
#include "cards/Hogar.h"
#include "games/FreecellRegler.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"
#include "platform/QtGeometry.h"
#include "solver/Losare.h"
#include "support/Gester.h"
#include "support/Lyssnare.h"
#include "support/Tangenter.h"
#include "support/Testbord.h"

#include <QAccessible>
#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <random>
#include <set>

// The table played with keys only: every move the rules list can be made by the keys, and
// makes the same table as the rules' own move; the focus frame stays on a place a player
// can act on through undo, a new deal and a resize; Escape puts taken cards back.

namespace {

QString PlanText(FjolkView& vy, const std::optional<TangentPlan>& plan) {
    if (!plan)
        return {};
    const std::vector<BordsPlats>& platser = vy.Tangenterna().Platserna();
    QString text = QStringLiteral(" (from %1, card %2")
                       .arg(QString::fromStdString(platser[plan->kalla].namn))
                       .arg(plan->grepp);
    if (!plan->klick)
        text += QStringLiteral(" to ") + QString::fromStdString(platser[plan->mal].namn);
    return text + QLatin1Char(')');
}

// Every listed move, made by keys from the table `fore`, each from that table again.
QString VarjeDragMedTangenter(FjolkView& vy, std::mt19937& slump) {
    Patiens& spel = *vy.Spel();
    const SpelRegler& regler = spel.Regler();
    auto fore = spel.Tabell().Kopia();
    QString fel;
    for (const Drag& d : regler.LagligaDrag(*fore)) {
        spel.Tabell().TaFran(*fore);
        vy.InvalidateOffscreen();
        std::optional<Gest> gest = spel.GestFor(d);
        // A press on a card over the stock makes two moves as one; the keys make them one
        // after the other.
        if (!gest || (d.slag == DragSlag::Knapp && d.fran >= 0))
            continue;
        unsigned fro = slump();
        std::srand(fro);
        std::optional<TangentPlan> plan = PlanFor(vy.Tangenterna().Platserna(), *gest);
        QString vagen = PlanText(vy, plan);
        QString varfor = GorMedTangenter(vy, *gest);
        if (varfor.isEmpty() && !EfterDrag(regler, *fore, d, fro)->Lika(spel.Tabell()))
            varfor = QStringLiteral("the keys made something else");
        if (!varfor.isEmpty()) {
            fel = QString::fromStdString(Beskriv(d)) + ": " + varfor + vagen;
            break;
        }
    }
    spel.Tabell().TaFran(*fore);
    vy.InvalidateOffscreen();
    return fel;
}

// A move the rules list, made by the rules, to reach other tables; never a new attempt,
// which shuffles.
bool SlumpDrag(Patiens& spel, std::mt19937& slump) {
    std::vector<Drag> dragen = spel.Regler().LagligaDrag(spel.Tabell());
    std::erase_if(dragen, [](const Drag& d) { return d.slag == DragSlag::NyttForsok; });
    if (dragen.empty())
        return false;
    const Drag& d = dragen[std::uniform_int_distribution<size_t>(0, dragen.size() - 1)(slump)];
    spel.Regler().GorDrag(spel.Tabell(), d, nullptr);
    spel.Regler().KlarSpel(spel.Tabell());
    return true;
}

void VarjeSpel() {
    QTest::addColumn<int>("spelNr");
    for (int nr = 0; nr < kAntalSpel; ++nr)
        if (SpelFinns(nr))
            QTest::addRow("%s", SpelNamn(nr)) << nr;
}

// The results of a game won with the mouse and the same game won with keys, entered into a
// fresh hiscore table: the same entry twice.
void SammaPostMedMusOchTangenter(int spelNr, FjolkView& mus, FjolkView& tangenter) {
    AttributeStore::Program().RemoveAttr(HiscoreAttributNamn(spelNr).c_str());
    QCOMPARE(mus.Spel()->AddHiscore(), 1);
    // The same result, a moment later: first or second, whichever the clocks say.
    int plats = tangenter.Spel()->AddHiscore();
    QVERIFY(plats == 1 || plats == 2);
    HiscoreLista tabell = LasHiscore(spelNr);
    QCOMPARE(tabell[2].kort, -1);
    QCOMPARE(tabell[0].kort, tabell[1].kort);
    QCOMPARE(tabell[0].giv, tabell[1].giv);
    QCOMPARE(tabell[0].angra, tabell[1].angra);
    QCOMPARE(QByteArray(tabell[0].namn), QByteArray(tabell[1].namn));
}

} // namespace

class TangentbordTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        AttributeStore::SetDataDirectory(dir.path().toStdString());
        // As a screen reader turns it on: what the keys do is told.
        SattTillganglighet(true);
    }

    void varjeDragMedTangenter_data() { VarjeSpel(); }
    void varjeDragMedTangenter() {
        QFETCH(int, spelNr);
        for (unsigned seed : {1u, 2u}) {
            auto vy = VyMedSpel(spelNr, seed, 1280, 1024);
            std::mt19937 slump(seed);
            for (int steg = 0; steg < 24; ++steg) {
                if (steg % 6 == 0) {
                    QString fel = VarjeDragMedTangenter(*vy, slump);
                    QVERIFY2(
                        fel.isEmpty(),
                        qPrintable(QStringLiteral("seed %1 step %2: ").arg(seed).arg(steg) + fel));
                }
                if (!SlumpDrag(*vy->Spel(), slump))
                    break;
                vy->InvalidateOffscreen();
            }
        }
    }

    // Taken cards put back with Escape leave the table as it was, with no move recorded.
    void escapeLaggerTillbaka_data() { VarjeSpel(); }
    void escapeLaggerTillbaka() {
        QFETCH(int, spelNr);
        auto vy = VyMedSpel(spelNr, 4, 1280, 1024);
        const std::vector<BordsPlats> platser = vy->Tangenterna().Platserna();
        int provade = 0;
        for (int k = 0; k < static_cast<int>(platser.size()) && provade < 3; ++k) {
            auto fore = vy->Spel()->Tabell().Kopia();
            TillPlats(*vy, k);
            Tangent(*vy, Qt::Key_Period);
            if (!vy->Tangenterna().Haller())
                continue;
            ++provade;
            Tangent(*vy, Qt::Key_Right);
            Tangent(*vy, Qt::Key_Escape);
            QVERIFY(!vy->Tangenterna().Haller());
            QVERIFY(!vy->GestPagar());
            QCOMPARE(vy->Meddelat(), std::string("put back"));
            QVERIFY2(vy->Spel()->Tabell().Lika(*fore), qPrintable(QString::number(k)));
        }
        QVERIFY(provade > 0);
        // A press of the mouse while keys hold cards puts them back too, and is a press.
        auto fore = vy->Spel()->Tabell().Kopia();
        TillPlats(*vy, 0);
        for (int k = 0; k < 40 && !vy->Tangenterna().Haller(); ++k) {
            Tangent(*vy, Qt::Key_Right);
            Tangent(*vy, Qt::Key_Period);
        }
        QVERIFY(vy->Tangenterna().Haller());
        QTest::mousePress(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(1, 1000));
        QVERIFY(!vy->Tangenterna().Haller());
        QVERIFY(vy->GestPagar());
        QTest::mouseRelease(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(1, 1000));
        QVERIFY(!vy->GestPagar());
        QVERIFY(vy->Spel()->Tabell().Lika(*fore));
    }

    // The frame is only ever on a place a player acts on, inside the table, and stays on
    // the same place through an undo, a new deal and a resize.
    void fokusOverleverAngraGivOchStorlek_data() { VarjeSpel(); }
    void fokusOverleverAngraGivOchStorlek() {
        QFETCH(int, spelNr);
        auto vy = VyMedSpel(spelNr, 5, 1280, 1024);
        auto giltiga = [&] {
            for (const BordsPlats& p : vy->Tangenterna().Platserna()) {
                if (!vy->Bounds().Contains(p.klick) || !(vy->Bounds() & p.ram).IsValid())
                    return false;
                if (p.hog >= 0 && p.luckor.empty()) {
                    Hog h = vy->Spel()->Regler().Hogar(vy->Spel()->Tabell())[p.hog];
                    if (h.slag == HogSlag::Kast || h.slag == HogSlag::Pyramid)
                        return false;
                }
            }
            return !vy->Tangenterna().Platserna().empty();
        };
        QVERIFY(giltiga());
        Tangent(*vy, Qt::Key_Right, 3);
        BordsPlats vald = *vy->Tangenterna().FokusPlats();
        QVERIFY(vy->Tangenterna().Synlig());
        std::vector<Drag> dragen = vy->Spel()->Regler().LagligaDrag(vy->Spel()->Tabell());
        QVERIFY(!dragen.empty());
        QCOMPARE(GorMedTangenter(*vy, *vy->Spel()->GestFor(dragen.front())), QString());
        TillPlats(*vy, 3);
        vald = *vy->Tangenterna().FokusPlats();
        if (vy->Spel()->Has_Undos()) {
            vy->Spel()->Undo();
            QVERIFY(giltiga());
            QVERIFY(vy->Tangenterna().FokusPlats()->SammaSom(vald));
        }
        vy->Spel()->NyttSpel(vy->Bounds());
        vy->InvalidateOffscreen();
        QVERIFY(giltiga());
        QVERIFY(vy->Tangenterna().FokusPlats()->SammaSom(vald));
        vy->resize(1000, 800);
        QVERIFY(giltiga());
        QVERIFY(vy->Tangenterna().FokusPlats()->SammaSom(vald));
        QVERIFY(vy->Tangenterna().Synlig());
        // A press of the mouse hides the frame; the next key shows it where it was.
        QTest::mousePress(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QTest::mouseRelease(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
        QVERIFY(!vy->Tangenterna().Synlig());
    }

    void platserUppochNer() {
        // Freecell: free cells and foundations in the top row, the columns below.
        auto vy = VyMedSpel(8, 3, 1280, 1024);
        Tangent(*vy, Qt::Key_Home);
        QCOMPARE(vy->Meddelat(), std::string("free cell 1: empty"));
        Tangent(*vy, Qt::Key_End);
        QCOMPARE(vy->Tangenterna().FokusPlats()->namn.substr(0, 9), std::string("column 8:"));
        Tangent(*vy, Qt::Key_Up);
        QCOMPARE(vy->Meddelat(), std::string("foundation 4: empty"));
        Tangent(*vy, Qt::Key_Down);
        QCOMPARE(vy->Tangenterna().FokusPlats()->namn.substr(0, 9), std::string("column 8:"));
        Tangent(*vy, Qt::Key_Left);
        QCOMPARE(vy->Tangenterna().FokusPlats()->namn.substr(0, 9), std::string("column 7:"));
    }

    // A column longer than the window is still a place: named by its top card, framed and
    // pressed where its cards show, as the mouse can press them there.
    void kolumnLangreAnFonstret() {
        auto vy = VyMedSpel(5, 3, 640, 380);
        const Patiens& spel = *vy->Spel();
        std::vector<Hog> hogar = spel.Regler().Hogar(spel.Tabell());
        int langst = -1;
        for (int i = 0; i < static_cast<int>(hogar.size()); ++i)
            if (hogar[i].slag == HogSlag::Kolumn &&
                (langst < 0 ||
                 AntalFyllda(spel.Luckor(), hogar[i].forsta, hogar[i].sista) >
                     AntalFyllda(spel.Luckor(), hogar[langst].forsta, hogar[langst].sista)))
                langst = i;
        QVERIFY(langst >= 0);
        const Hog& hog = hogar[langst];
        const int topp = hog.forsta + AntalFyllda(spel.Luckor(), hog.forsta, hog.sista) - 1;
        QVERIFY(!vy->Bounds().Contains(Mitt(spel.Luckor()[topp].GePos())));
        QVERIFY(vy->Bounds().Contains(Mitt(spel.Luckor()[hog.forsta].GePos())));
        const std::vector<BordsPlats>& platser = vy->Tangenterna().Platserna();
        auto plats = std::find_if(platser.begin(), platser.end(),
                                  [&](const BordsPlats& p) { return p.hog == langst; });
        QVERIFY(plats != platser.end());
        QCOMPARE(plats->namn, BeskrivHog(hog, spel.Luckor()));
        QVERIFY(vy->Bounds().Contains(plats->klick));
        QVERIFY((vy->Bounds() & plats->ram).IsValid());
        QVERIFY(!plats->grepp.empty());
        for (BPoint p : plats->grepp)
            QVERIFY(vy->Bounds().Contains(p));
        const int k = static_cast<int>(plats - platser.begin());
        auto fore = spel.Tabell().Kopia();
        TillPlats(*vy, k);
        Tangent(*vy, Qt::Key_Period);
        QVERIFY(vy->Tangenterna().Haller());
        QVERIFY(std::find(spel.valdaLuckor.begin(), spel.valdaLuckor.end(), topp) !=
                spel.valdaLuckor.end());
        Tangent(*vy, Qt::Key_Escape);
        QVERIFY(!vy->Tangenterna().Haller());
        QVERIFY(spel.Tabell().Lika(*fore));
    }

    // 13-Pyramiden: the frame comes only to pyramid cards that are free (both cards that lie
    // over them from the row below gone), the ones a press can take; a screen reader still
    // finds every card of the pyramid in the table.
    void pyramidensTacktaKortFarInteRamen() {
        auto vy = VyMedSpel(7, 3, 1280, 1024);
        const Patiens& spel = *vy->Spel();
        // The pyramid's rows lie in slots 0..27, row r from r(r+1)/2; the two under slot i of
        // row r are i + r + 1 and i + r + 2 (the eighth row, 28..35, stays empty).
        auto fri = [&](int i) {
            int r = 0;
            while ((r + 1) * (r + 2) / 2 <= i)
                ++r;
            return !spel.Luckor()[i].Tom() && spel.Luckor()[i + r + 1].Tom() &&
                   spel.Luckor()[i + r + 2].Tom();
        };
        auto besokta = [&] {
            std::set<int> kort;
            Tangent(*vy, Qt::Key_Home);
            for (int steg = 0; steg < 60; ++steg) {
                const BordsPlats* p = vy->Tangenterna().FokusPlats();
                if (p != nullptr && !p->luckor.empty() && p->luckor.front() < 28)
                    kort.insert(p->luckor.front());
                Tangent(*vy, Qt::Key_Right);
            }
            for (int steg = 0; steg < 20; ++steg) {
                Tangent(*vy, Qt::Key_Up);
                const BordsPlats* p = vy->Tangenterna().FokusPlats();
                if (p != nullptr && !p->luckor.empty() && p->luckor.front() < 28)
                    kort.insert(p->luckor.front());
            }
            return kort;
        };
        auto friaKort = [&] {
            std::set<int> kort;
            for (int i = 0; i < 28; ++i)
                if (fri(i))
                    kort.insert(i);
            return kort;
        };
        QCOMPARE(besokta(), friaKort());
        int iTabellen = 0;
        for (const BordsPlats& p : vy->Tangenterna().Platserna())
            iTabellen += !p.luckor.empty() && p.luckor.front() < 28 ? 1 : 0;
        QCOMPARE(iTabellen, 28);
        QAccessibleInterface* bord = QAccessible::queryAccessibleInterface(vy.get());
        QVERIFY(bord != nullptr);
        QCOMPARE(bord->childCount(), static_cast<int>(vy->Tangenterna().Platserna().size()));
        // A pair taken away frees the cards it covered.
        std::vector<Drag> dragen = spel.Regler().LagligaDrag(spel.Tabell());
        auto par = std::find_if(dragen.begin(), dragen.end(), [](const Drag& d) {
            return d.slag == DragSlag::Par || (d.slag == DragSlag::Kort && d.fran < 28);
        });
        QVERIFY(par != dragen.end());
        QCOMPARE(GorMedTangenter(*vy, *spel.GestFor(*par)), QString());
        QCOMPARE(besokta(), friaKort());
    }

    void hogarIOrd() {
        std::vector<Lucka> luckor(30, Lucka(BRect(0, 0, 0, 0), false));
        for (auto [i, farg, valor] :
             {std::tuple{0, HJARTER, 13}, std::tuple{1, SPADER, 12}, std::tuple{2, RUTER, 11},
              std::tuple{3, HJARTER, 8}, std::tuple{4, KLOVER, 7}})
            luckor[i].TaEmotKort(Kort(farg, valor, BRect(0, 0, 0, 0)));
        QCOMPARE(BeskrivHog({HogSlag::Kolumn, 3, 0, 21}, luckor),
                 std::string("column 3: seven of clubs on eight of hearts, 5 cards"));
        QCOMPARE(BeskrivHog({HogSlag::Fricell, 2, 22, 23}, luckor),
                 std::string("free cell 2: empty"));
        QCOMPARE(BeskrivHog({HogSlag::Grund, 1, 0, 0}, luckor),
                 std::string("foundation 1: king of hearts"));
        QCOMPARE(BeskrivHog({HogSlag::Pyramid, 2, 1, 1, 7}, luckor),
                 std::string("row 7, pyramid card 2: queen of spades"));
        std::vector<Lucka> lek(20, Lucka(BRect(0, 0, 0, 0), true));
        for (int i = 0; i < 14; ++i)
            lek[i].TaEmotKort(Kort(KLOVER, i % 13 + 1, BRect(0, 0, 0, 0)));
        QCOMPARE(BeskrivHog({HogSlag::Lek, 0, 0, 19}, lek), std::string("stock: 14 cards"));
        QCOMPARE(KortNamn(Kort(SPADER, 1, BRect(0, 0, 0, 0))), std::string("ace of spades"));
        QCOMPARE(KortNamn(Kort(RUTER, 10, BRect(0, 0, 0, 0))), std::string("ten of diamonds"));
    }

    // A won deal played with keys only ends in the same won table and hiscore entry as the
    // same moves made with the mouse.
    void vinstMedTangenter_data() {
        QTest::addColumn<int>("spelNr");
        QTest::addColumn<unsigned>("fro");
        QTest::addRow("Freecell") << 8 << 29u;
    }
    void vinstMedTangenter() {
        QFETCH(int, spelNr);
        QFETCH(unsigned, fro);
        auto mus = VyMedSpel(spelNr, fro, 1280, 1024);
        auto tangenter = VyMedSpel(spelNr, fro, 1280, 1024);
        const SpelRegler& regler = mus->Spel()->Regler();
        std::vector<Drag> vag = Los(regler, mus->Spel()->Tabell(), SokGranser{200000}).drag;
        QVERIFY(!vag.empty());
        for (const Drag& d : vag) {
            // The move as the rules list it now: a single card may be listed as a run of one.
            std::vector<Drag> listade = regler.LagligaDrag(mus->Spel()->Tabell());
            auto hittad = std::find_if(listade.begin(), listade.end(), [&](const Drag& l) {
                auto a = mus->Spel()->Tabell().Kopia();
                auto b = mus->Spel()->Tabell().Kopia();
                regler.GorDrag(*a, l, nullptr);
                regler.GorDrag(*b, d, nullptr);
                return a->Lika(*b);
            });
            QVERIFY2(hittad != listade.end(), Beskriv(d).c_str());
            std::optional<Gest> gest = mus->Spel()->GestFor(*hittad);
            QVERIFY(gest.has_value());
            GorGest(*mus, *gest);
            QCOMPARE(GorMedTangenter(*tangenter, *tangenter->Spel()->GestFor(*hittad)), QString());
            QVERIFY2(tangenter->Spel()->Tabell().Lika(mus->Spel()->Tabell()), Beskriv(d).c_str());
        }
        QVERIFY(mus->Spel()->KlarSpel());
        QVERIFY(tangenter->Spel()->KlarSpel());
        QCOMPARE(tangenter->Meddelat(), std::string("won"));
        SammaPostMedMusOchTangenter(spelNr, *mus, *tangenter);
    }

    // A screen reader reads the table's places by name, follows the frame as the focus and
    // hears each move.
    void tillgangligtBord_data() { VarjeSpel(); }
    void tillgangligtBord() {
        QFETCH(int, spelNr);
        auto vy = VyMedSpel(spelNr, 6, 1280, 1024);
        vy->setFocus();
        QAccessibleInterface* bord = QAccessible::queryAccessibleInterface(vy.get());
        QVERIFY(bord != nullptr);
        QCOMPARE(bord->role(), QAccessible::Table);
        const std::vector<BordsPlats> platser = vy->Tangenterna().Platserna();
        QCOMPARE(bord->childCount(), static_cast<int>(platser.size()));
        for (int i = 0; i < bord->childCount(); ++i) {
            QAccessibleInterface* plats = bord->child(i);
            QCOMPARE(plats->text(QAccessible::Name), QString::fromStdString(platser[i].namn));
            QCOMPARE(plats->role(),
                     platser[i].knapp >= 0 ? QAccessible::Button : QAccessible::Cell);
            QCOMPARE(bord->indexOfChild(plats), i);
            QCOMPARE(plats->parent(), bord);
        }
        // The third place the frame comes to, two to the right of the first.
        std::vector<int> iFokus;
        for (int i = 0; i < static_cast<int>(platser.size()); ++i)
            if (platser[i].iFokus)
                iFokus.push_back(i);
        QVERIFY(iFokus.size() >= 3);
        Tangent(*vy, Qt::Key_Right, 2);
        QCOMPARE(bord->focusChild(), bord->child(iFokus[2]));
        QVERIFY(bord->child(iFokus[2])->state().focused);
        QVERIFY(!bord->child(iFokus[1])->state().focused);
        QCOMPARE(bord->focusChild()->text(QAccessible::Name),
                 QString::fromStdString(platser[iFokus[2]].namn));
        // A move is told in words; the focused place keeps its own name.
        std::vector<Drag> dragen = vy->Spel()->Regler().LagligaDrag(vy->Spel()->Tabell());
        QVERIFY(!dragen.empty());
        QCOMPARE(GorMedTangenter(*vy, *vy->Spel()->GestFor(dragen.front())), QString());
        QVERIFY2(vy->Meddelat() != "nothing moved", vy->Meddelat().c_str());
        const BordsPlats* har = vy->Tangenterna().FokusPlats();
        QCOMPARE(bord->focusChild()->text(QAccessible::Name), QString::fromStdString(har->namn));
        QCOMPARE(bord->childCount(), static_cast<int>(vy->Tangenterna().Platserna().size()));
        Tangent(*vy, Qt::Key_Home);
        const std::vector<BordsPlats>& nu = vy->Tangenterna().Platserna();
        auto forsta = std::find_if(nu.begin(), nu.end(), [](const auto& p) { return p.iFokus; });
        QVERIFY(forsta != nu.end());
        QCOMPARE(bord->focusChild()->text(QAccessible::Name), QString::fromStdString(forsta->namn));
    }

    // The end of a game laid out card by card, finished with the mouse in one view and with
    // keys in another: the same won table and hiscore entry.
    void slutetMedTangenter_data() {
        QTest::addColumn<int>("spelNr");
        QTest::addRow("Idioten 1") << 0;
        QTest::addRow("Eight off") << 9;
    }
    void slutetMedTangenter() {
        QFETCH(int, spelNr);
        auto mus = VyMedSpel(spelNr, 3, 1280, 1024);
        auto tangenter = VyMedSpel(spelNr, 3, 1280, 1024);
        for (FjolkView* vy : {mus.get(), tangenter.get()}) {
            Patiens& spel = *vy->Spel();
            TommaBordet(spel);
            auto lagg = [&](int i, kortfarg farg, int valor) { LaggKort(spel, i, farg, valor); };
            for (int f = 0; f < 4; ++f) {
                auto farg = static_cast<kortfarg>(f);
                if (spelNr == 0) {
                    // Every row built but its king, which lies one place too far right.
                    for (int v = 2; v <= 12; ++v)
                        lagg(13 * f + v - 2, farg, v);
                    lagg(13 * f + 12, farg, 13);
                } else {
                    // The foundations built up to the queens; the kings in the columns.
                    for (int v = 1; v <= 12; ++v)
                        lagg(192 + 13 * f + v - 1, farg, v);
                    lagg(22 * f, farg, 13);
                }
            }
            spel.KlarSpel();
            vy->InvalidateOffscreen();
        }
        const SpelRegler& regler = mus->Spel()->Regler();
        int drag = 0;
        while (!mus->Spel()->KlarSpel() && drag < 8) {
            std::vector<Drag> listade = regler.LagligaDrag(mus->Spel()->Tabell());
            auto hem = std::find_if(listade.begin(), listade.end(), [&](const Drag& d) {
                return spelNr == 0 ? d.till % 13 == 11 : d.till >= 192;
            });
            QVERIFY(hem != listade.end());
            GorGest(*mus, *mus->Spel()->GestFor(*hem));
            QCOMPARE(SpelaMedTangenter(*tangenter, {*hem}), QString());
            QVERIFY(tangenter->Spel()->Tabell().Lika(mus->Spel()->Tabell()));
            ++drag;
        }
        QCOMPARE(drag, 4);
        QVERIFY(mus->Spel()->KlarSpel());
        QVERIFY(tangenter->Spel()->KlarSpel());
        QCOMPARE(tangenter->Meddelat(), std::string("won"));
        SammaPostMedMusOchTangenter(spelNr, *mus, *tangenter);
    }

    // The frame: two pixels of yellow between dark edges, around the place, on the screen but
    // never in the table's own picture.
    void ramenRitas() {
        auto vy = VyMedSpel(8, 3, 1280, 1024);
        QImage fore = vy->grab().toImage();
        Tangent(*vy, Qt::Key_End);
        const BordsPlats* plats = vy->Tangenterna().FokusPlats();
        QVERIFY(plats != nullptr);
        QImage bild = vy->grab().toImage();
        QRect r = ToQRect(plats->ram);
        const int y = r.center().y();
        const QColor mork(40, 30, 0);
        const QColor gul(255, 220, 0);
        QCOMPARE(bild.pixelColor(r.left() - 3, y), mork);
        QCOMPARE(bild.pixelColor(r.left() - 2, y), gul);
        QCOMPARE(bild.pixelColor(r.left() - 1, y), gul);
        QCOMPARE(bild.pixelColor(r.left(), y), mork);
        QCOMPARE(bild.pixelColor(r.right() + 2, y), gul);
        QCOMPARE(bild.pixelColor(r.center().x(), r.top() - 2), gul);
        QCOMPARE(bild.pixelColor(r.center().x(), r.bottom() + 1), gul);
        QCOMPARE(bild.pixelColor(r.left() - 4, y), fore.pixelColor(r.left() - 4, y));
        QCOMPARE(bild.pixelColor(r.center()), fore.pixelColor(r.center()));
        QVERIFY(vy->OffBitmap().pixelColor(r.left() - 2, y) != gul);
        // A press of the mouse takes it away.
        QTest::mousePress(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 1000));
        QTest::mouseRelease(vy.get(), Qt::LeftButton, Qt::NoModifier, QPoint(2, 1000));
        QCOMPARE(vy->grab().toImage().pixelColor(r.left() - 2, y),
                 fore.pixelColor(r.left() - 2, y));
    }

private:
    QTemporaryDir dir;
};

QTEST_MAIN(TangentbordTest)
#include "test_tangentbord.moc"

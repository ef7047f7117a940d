#include "app/Snapshot.h"

#include <QApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

class SnapshotTest : public QObject {
    Q_OBJECT

private slots:
    void bildenHarBordetsStorlekOchSammaGivGerSammaBild() {
        QTemporaryDir dir;
        QString a = dir.filePath(QStringLiteral("a.png"));
        QString b = dir.filePath(QStringLiteral("b.png"));
        std::srand(7);
        QCOMPARE(SparaBild(0, 1280, 1024, a.toStdString()), 0);
        QImage bild(a);
        QCOMPARE(bild.size(), QSize(1280, 1024));
        // The table green shows at the bottom right, below and beside the cards.
        QCOMPARE(QColor(bild.pixel(1279, 1023)), QColor(0, 160, 0));
        std::srand(7);
        QCOMPARE(SparaBild(0, 1280, 1024, b.toStdString()), 0);
        QImage igen(b);
        // The backs are striped anew each time, but a dealt Idioten shows none.
        QCOMPARE(igen, bild);
    }

    void spelSomInteFinnsGerFelkod() {
        QTemporaryDir dir;
        QCOMPARE(SparaBild(12, 640, 480, dir.filePath(QStringLiteral("x.png")).toStdString()), 1);
    }

    void filSomInteKanSkrivasGerFelkod() {
        QCOMPARE(SparaBild(0, 640, 480, "/nonexistent-folder/x.png"), 1);
    }
};

QTEST_MAIN(SnapshotTest)
#include "test_snapshot.moc"

#include "welcome/StatistikDialog.h"

#include "cards/Statistik.h"
#include "games/Spelfabrik.h"
#include "platform/AttributeStore.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

const QStringList kKolumner = {QStringLiteral("Game"),         QStringLiteral("Player"),
                               QStringLiteral("Played"),       QStringLiteral("Won"),
                               QStringLiteral("Won %"),        QStringLiteral("Streak"),
                               QStringLiteral("Longest"),      QStringLiteral("Fastest win"),
                               QStringLiteral("Fewest undos"), QStringLiteral("Last game")};

QTableWidgetItem* Cell(const QString& text, bool tal) {
    auto* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    if (tal)
        cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return cell;
}

} // namespace

StatistikDialog::StatistikDialog(QWidget* parent, AttributeStore& attributStore)
    : QDialog(parent), store(attributStore) {
    setObjectName(QStringLiteral("statisticswindow"));
    setWindowTitle(QStringLiteral("Statistics"));
    auto* lager = new QVBoxLayout(this);
    tabell = new QTableWidget(this);
    tabell->setObjectName(QStringLiteral("statisticstable"));
    tabell->setAccessibleName(QStringLiteral("Statistics"));
    tabell->setAccessibleDescription(
        QStringLiteral("Each game's record for each player, a row each: games played and won, "
                       "streaks, the fastest win, the fewest undos and the last game"));
    tabell->setColumnCount(static_cast<int>(kKolumner.size()));
    tabell->setHorizontalHeaderLabels(kKolumner);
    tabell->verticalHeader()->hide();
    tabell->verticalHeader()->setDefaultSectionSize(tabell->fontMetrics().height() + 6);
    tabell->horizontalHeader()->setStretchLastSection(true);
    tabell->setSelectionBehavior(QAbstractItemView::SelectRows);
    lager->addWidget(tabell);
    auto* knappar = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(knappar, &QDialogButtonBox::rejected, this, &QDialog::reject);
    lager->addWidget(knappar);
    Las();
    resize(720, 12 * tabell->verticalHeader()->defaultSectionSize() + 110);
}

void StatistikDialog::Las() {
    std::vector<StatisticsRow> rader;
    status_t status = store.InitCheck() == B_OK ? store.ListStatistics(-1, &rader) : B_OK;
    tabell->setRowCount(0);
    for (int spel = 0; spel < kAntalSpel; ++spel) {
        std::vector<StatisticsRow> spelets;
        for (const StatisticsRow& rad : rader)
            if (rad.game == spel)
                spelets.push_back(rad);
        if (spelets.empty())
            spelets.push_back(StatisticsRow{spel, ""});
        for (const StatisticsRow& rad : spelets) {
            int r = tabell->rowCount();
            tabell->insertRow(r);
            bool spelad = rad.played > 0;
            bool vunnen = rad.won > 0;
            QStringList celler = {
                QString::fromUtf8(SpelNamn(spel)),
                QString::fromStdString(rad.player),
                QString::number(rad.played),
                QString::number(rad.won),
                spelad ? QString::number(AndelVunna(rad)) : QString(),
                QString::number(rad.currentStreak),
                QString::number(rad.longestStreak),
                vunnen ? QString::fromStdString(StatistikTid(rad.fastestSeconds)) : QString(),
                vunnen ? QString::number(rad.fewestUndos) : QString(),
                spelad ? QString::fromStdString(StatistikDatum(rad.lastGame)) : QString()};
            for (int k = 0; k < celler.size(); ++k)
                tabell->setItem(r, k, Cell(celler[k], k >= 2));
        }
    }
    if (status == B_BAD_VALUE) {
        tabell->setRowCount(0);
        tabell->insertRow(0);
        tabell->setItem(0, 0,
                        Cell(QStringLiteral("The statistics cannot be read; they start afresh "
                                            "with the next result."),
                             false));
        tabell->setSpan(0, 0, 1, tabell->columnCount());
    }
    tabell->resizeColumnsToContents();
}

#pragma once

#include <QDialog>

class AttributeStore;
class QTableWidget;

// The "Statistics" window: all twelve games, each with every player's record in it (a game
// nobody has played shows one empty line). It reads the store when it is shown.
class StatistikDialog : public QDialog {
public:
    StatistikDialog(QWidget* parent, AttributeStore& store);

    // Reads the store again.
    void Las();

    QTableWidget* tabell = nullptr;

private:
    AttributeStore& store;
};

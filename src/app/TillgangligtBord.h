#pragma once

#include <QAccessibleWidget>

#include <deque>
#include <map>
#include <memory>

class FjolkView;

// The table as a screen reader sees it: the play view, whose children are the places the
// keyboard reaches, each named in words ("column 3: seven of clubs on eight of hearts,
// 5 cards"); the place in the focus frame is the focused child. What happens on the table is
// told as notifications of the table, each an object of its own that is shown once, named
// with its words.
class TillgangligtBord : public QAccessibleWidget {
public:
    explicit TillgangligtBord(FjolkView* view);
    ~TillgangligtBord() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;
    QAccessibleInterface* childAt(int x, int y) const override;

    FjolkView* Vy() const;

    // Shows a new notification of the table with `text`.
    void Ropa(const QString& text);
    // Whether a screen reader listens: only then is anything told, or made to be told.
    static bool Lyssnar();

    // Installed once: the play view is made accessible by this class.
    static void Installera();

private:
    mutable std::map<int, QAccessible::Id> barn;
    // The last notifications: a screen reader reads one's words after it has been shown, and
    // may read the next before it is done.
    std::deque<QAccessible::Id> utrop;
};

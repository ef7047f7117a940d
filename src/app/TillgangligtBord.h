#pragma once

#include <QAccessibleWidget>

#include <map>
#include <memory>

class FjolkView;

// The table as a screen reader sees it: the play view, whose children are the places the
// keyboard reaches, each named in words ("column 3: seven of clubs on eight of hearts,
// 5 cards"); the place in the focus frame is the focused child.
class TillgangligtBord : public QAccessibleWidget {
public:
    explicit TillgangligtBord(FjolkView* view);
    ~TillgangligtBord() override;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QString text(QAccessible::Text t) const override;

    FjolkView* Vy() const;

    // Installed once: the play view is made accessible by this class.
    static void Installera();

private:
    mutable std::map<int, QAccessible::Id> barn;
};

#include "app/TillgangligtBord.h"

#include "app/FjolkView.h"
#include "app/Tangentbord.h"
#include "platform/QtGeometry.h"

namespace {

// Something of the table with nothing inside it, owned by the table's view.
class TillgangligtBlad : public QAccessibleInterface {
public:
    explicit TillgangligtBlad(const TillgangligtBord* bord) : bordet(bord) {}

    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return bordet->window(); }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(bordet->Vy());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}

protected:
    const TillgangligtBord* bordet;
};

// One place of the table; it reads the place at its index as the table is now.
class TillgangligPlats : public TillgangligtBlad {
public:
    TillgangligPlats(const TillgangligtBord* bord, int index) : TillgangligtBlad(bord), nr(index) {}

    bool isValid() const override { return Platsen() != nullptr; }
    QString text(QAccessible::Text t) const override {
        const BordsPlats* p = Platsen();
        if (p == nullptr || t != QAccessible::Name)
            return {};
        return QString::fromStdString(p->namn);
    }
    QRect rect() const override {
        const BordsPlats* p = Platsen();
        if (p == nullptr)
            return {};
        QRect r = ToQRect(p->ram);
        return QRect(bordet->Vy()->mapToGlobal(r.topLeft()), r.size());
    }
    QAccessible::Role role() const override {
        const BordsPlats* p = Platsen();
        return p != nullptr && p->knapp >= 0 ? QAccessible::Button : QAccessible::Cell;
    }
    QAccessible::State state() const override {
        QAccessible::State s;
        s.focusable = Platsen() != nullptr && Platsen()->iFokus;
        s.focused =
            bordet->Vy()->Tangenterna().Fokus() == nr && bordet->Vy()->Tangenterna().Synlig();
        s.invalid = Platsen() == nullptr;
        return s;
    }

private:
    const BordsPlats* Platsen() const {
        const auto& platser = bordet->Vy()->Tangenterna().Platserna();
        return nr < static_cast<int>(platser.size()) ? &platser[nr] : nullptr;
    }

    int nr;
};

// One thing told of the table: shown once, as a notification with these words.
class TillgangligtUtrop : public TillgangligtBlad {
public:
    TillgangligtUtrop(const TillgangligtBord* bord, QString text)
        : TillgangligtBlad(bord), orden(std::move(text)) {}

    bool isValid() const override { return true; }
    QString text(QAccessible::Text t) const override {
        return t == QAccessible::Name ? orden : QString();
    }
    // Nowhere on the screen: the words are for the ear.
    QRect rect() const override { return QRect(bordet->Vy()->mapToGlobal(QPoint(0, 0)), QSize()); }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }

private:
    QString orden;
};

QAccessibleInterface* Fabrik(const QString& klass, QObject* objekt) {
    if (klass == QLatin1String("QWidget"))
        if (auto* vy = dynamic_cast<FjolkView*>(objekt))
            return new TillgangligtBord(vy);
    return nullptr;
}

} // namespace

TillgangligtBord::TillgangligtBord(FjolkView* view)
    : QAccessibleWidget(view, QAccessible::Table, QStringLiteral("table")) {}

TillgangligtBord::~TillgangligtBord() {
    for (auto [nr, id] : barn)
        QAccessible::deleteAccessibleInterface(id);
    for (QAccessible::Id id : utrop)
        QAccessible::deleteAccessibleInterface(id);
}

void TillgangligtBord::Ropa(const QString& text) {
    constexpr size_t kSparade = 16;
    QAccessibleInterface* nytt = new TillgangligtUtrop(this, text);
    utrop.push_back(QAccessible::registerAccessibleInterface(nytt));
    if (utrop.size() > kSparade) {
        QAccessible::deleteAccessibleInterface(utrop.front());
        utrop.pop_front();
    }
    QAccessibleEvent visas(nytt, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&visas);
}

bool TillgangligtBord::Lyssnar() {
    return QAccessible::isActive();
}

FjolkView* TillgangligtBord::Vy() const {
    return static_cast<FjolkView*>(widget());
}

int TillgangligtBord::childCount() const {
    return static_cast<int>(Vy()->Tangenterna().Platserna().size());
}

QAccessibleInterface* TillgangligtBord::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    auto det = barn.find(index);
    if (det == barn.end()) {
        auto* plats = new TillgangligPlats(this, index);
        det = barn.emplace(index, QAccessible::registerAccessibleInterface(plats)).first;
    }
    return QAccessible::accessibleInterface(det->second);
}

int TillgangligtBord::indexOfChild(const QAccessibleInterface* c) const {
    for (auto [nr, id] : barn)
        if (QAccessible::accessibleInterface(id) == c)
            return nr < childCount() ? nr : -1;
    return -1;
}

QAccessibleInterface* TillgangligtBord::focusChild() const {
    return child(Vy()->Tangenterna().Fokus());
}

QAccessibleInterface* TillgangligtBord::childAt(int x, int y) const {
    for (int i = 0; i < childCount(); ++i)
        if (QAccessibleInterface* c = child(i); c != nullptr && c->rect().contains(x, y))
            return c;
    return nullptr;
}

void TillgangligtBord::Installera() {
    static bool installerad = false;
    if (!installerad) {
        installerad = true;
        QAccessible::installFactory(Fabrik);
    }
}

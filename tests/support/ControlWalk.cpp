#include "support/ControlWalk.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeView>

#include <map>

namespace support {

namespace {

constexpr int kLongestRound = 200;

// One that is made of others, which are no controls of their own.
bool IsComposite(const QWidget &widget)
{
    return qobject_cast<const QComboBox *>(&widget) || qobject_cast<const QAbstractSpinBox *>(&widget) ||
           qobject_cast<const QAbstractItemView *>(&widget) || qobject_cast<const QLineEdit *>(&widget) ||
           qobject_cast<const QTabBar *>(&widget) || qobject_cast<const QAbstractScrollArea *>(&widget);
}

bool IsPart(const QWidget &widget)
{
    for (const QWidget *above = widget.parentWidget(); above && !widget.isWindow();
         above = above->isWindow() ? nullptr : above->parentWidget())
        if (IsComposite(*above))
            return true;
    return false;
}

// The roles that tell a person what can be done with a control of that kind.
QList<QAccessible::Role> FittingRoles(const QWidget &widget)
{
    if (qobject_cast<const QRadioButton *>(&widget))
        return { QAccessible::RadioButton };
    if (qobject_cast<const QCheckBox *>(&widget))
        return { QAccessible::CheckBox };
    if (qobject_cast<const QAbstractButton *>(&widget))
        return { QAccessible::Button, QAccessible::Link };
    if (qobject_cast<const QTextBrowser *>(&widget))
        return { QAccessible::Document, QAccessible::StaticText, QAccessible::EditableText };
    if (qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QTextEdit *>(&widget) ||
        qobject_cast<const QPlainTextEdit *>(&widget))
        return { QAccessible::EditableText };
    if (qobject_cast<const QComboBox *>(&widget))
        return { QAccessible::ComboBox };
    if (qobject_cast<const QTreeView *>(&widget))
        return { QAccessible::Tree, QAccessible::Table };
    if (qobject_cast<const QTableView *>(&widget))
        return { QAccessible::Table };
    if (qobject_cast<const QAbstractItemView *>(&widget))
        return { QAccessible::List };
    if (qobject_cast<const QTabBar *>(&widget))
        return { QAccessible::PageTabList };
    if (qobject_cast<const QAbstractSlider *>(&widget))
        return { QAccessible::Slider };
    if (qobject_cast<const QAbstractSpinBox *>(&widget))
        return { QAccessible::SpinBox };
    return {};
}

QString Told(const QWidget &widget)
{
    const QString name = widget.objectName();
    return name.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : name;
}

QString Told(const QList<QWidget *> &way)
{
    QStringList names;
    for (const QWidget *stop : way)
        names << Told(*stop);
    return names.join(QStringLiteral(", "));
}

QString NameOf(QWidget &widget)
{
    const QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&widget);
    return told ? told->text(QAccessible::Name).trimmed() : QString();
}

// The place where the focus is in `window`; a composite for its parts.
QWidget *FocusOf(const QWidget &window)
{
    QWidget *focus = window.focusWidget();
    while (focus && !focus->isWindow() && IsPart(*focus))
        focus = focus->parentWidget();
    return focus;
}

QList<QWidget *> Round(QWidget &window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QList<QWidget *> reached;
    for (int step = 0; step < kLongestRound; ++step) {
        QWidget *focus = FocusOf(window);
        // On a page the key goes from link to link first.
        const bool isStillThere = !reached.isEmpty() && focus == reached.last() && step < kLongestRound / 2;
        if (!focus || (reached.contains(focus) && !isStillThere))
            break;
        if (!isStillThere)
            reached << focus;
        QTest::keyClick(window.focusWidget(), key, modifiers);
    }
    return reached;
}

// Those that the arrow keys reach from the chosen option button.
QList<QWidget *> ArrowRound(QRadioButton &chosen)
{
    QList<QWidget *> reached;
    QWidget &window = *chosen.window();
    chosen.setFocus();
    for (int step = 0; step < kLongestRound && !reached.contains(window.focusWidget()); ++step) {
        reached << window.focusWidget();
        QTest::keyClick(window.focusWidget(), Qt::Key_Down);
    }
    return reached;
}

} // namespace

bool IsControl(const QWidget &widget)
{
    if (widget.isWindow() || !widget.isVisible() || !widget.isEnabled() || IsPart(widget) ||
        widget.focusProxy() || qobject_cast<const QScrollBar *>(&widget))
        return false;
    return !FittingRoles(widget).isEmpty() || (widget.focusPolicy() & Qt::TabFocus);
}

QList<QWidget *> Controls(QWidget &window)
{
    QList<QWidget *> controls;
    for (QWidget *widget : window.findChildren<QWidget *>())
        if (widget->window() == &window && IsControl(*widget))
            controls << widget;
    return controls;
}

QList<QWidget *> TabRound(QWidget &window)
{
    return Round(window, Qt::Key_Tab, Qt::NoModifier);
}

QStringList FaultsForKeyboardAndReader(QWidget &window)
{
    QStringList faults;
    // Only in a window that has the keyboard do option buttons behave as they do before a person.
    if (!QTest::qWaitForWindowActive(&window))
        return { QStringLiteral("the window does not get the keyboard") };
    // A list may show something else when it is come to, which may enable a button.
    TabRound(window);
    if (NameOf(window).isEmpty())
        faults << QStringLiteral("the window has no name");
    const QList<QWidget *> controls = Controls(window);
    QList<QWidget *> reached = TabRound(window);
    if (!reached.isEmpty()) {
        reached.first()->setFocus();
        QList<QWidget *> back = Round(window, Qt::Key_Backtab, Qt::ShiftModifier);
        std::reverse(back.begin() + 1, back.end());
        if (back != reached)
            faults << QStringLiteral("Tab goes %1, but Shift and Tab %2").arg(Told(reached), Told(back));
    }
    for (QWidget *control : QList(reached))
        if (auto *option = qobject_cast<QRadioButton *>(control))
            reached += ArrowRound(*option);
    for (const QWidget *stop : reached)
        if (!controls.contains(stop))
            faults << Told(*stop) + QStringLiteral(" is reached by Tab and is no control");

    std::map<QString, QString> names;
    for (QWidget *control : controls) {
        const QString told = Told(*control);
        if (!reached.contains(control))
            faults << told + QStringLiteral(" is not reached by Tab");
        const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(control);
        if (!reader) {
            faults << told + QStringLiteral(" is not told of at all");
            continue;
        }
        if (!FittingRoles(*control).contains(reader->role()))
            faults << told + QStringLiteral(" has role %1").arg(reader->role());
        if (!reader->state().focusable)
            faults << told + QStringLiteral(" is not told to take the keyboard");
        const QString name = NameOf(*control);
        // The tabs of pages have the name of the one that is in front.
        if (qobject_cast<QTabBar *>(control))
            continue;
        if (name.isEmpty())
            faults << told + QStringLiteral(" has no name");
        if (name.contains(QLatin1Char('&')))
            faults << told + QStringLiteral(" has a name with a sign for a key: ") + name;
        if (!name.isEmpty() && !names.emplace(name, told).second)
            faults << told + QStringLiteral(" has the name of ") + names[name];
    }
    for (QLabel *label : window.findChildren<QLabel *>()) {
        if (!label->isVisible() || label->text().isEmpty() || label->window() != &window || IsPart(*label))
            continue;
        const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(label);
        if (!reader || reader->role() != QAccessible::StaticText || NameOf(*label).isEmpty())
            faults << Told(*label) + QStringLiteral(" is not read: ") + label->text();
    }
    return faults;
}

} // namespace support

#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "game/frmSpell1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "platform/forms/Resizer.h"
#include "setup/frmChooseList1.h"
#include "shell/frmMenu1.h"
#include "shell/frmSettings.h"
#include "support/Desk.h"

#include <QGroupBox>
#include <QTest>

#include <map>

using namespace tumblewick;
using support::Desk;

namespace {

// What of a screen keeps its figures when the window grows.
struct Held {
    std::function<platform::Screen &()> shared;
    QStringList types; // of controls that keep their size and their type
    bool keepsTop;     // and their vertical place
};

template <class T>
Held Of(const QStringList &types = {}, bool keepsTop = false)
{
    return { []() -> platform::Screen & { return T::Shared(); }, types, keepsTop };
}

const std::map<QString, Held> kScreens = {
    { "frmMenu1", Of<frmMenu1>({ "CommandButton" }, true) },
    { "frmList", Of<frmList>({ "CommandButton" }, true) },
    { "frmChooseList1", Of<frmChooseList1>({ "CommandButton", "Label" }, true) },
    { "frmEdit", Of<frmEdit>({ "CommandButton", "Label" }, true) },
    { "frmSpell1", Of<frmSpell1>({ "CommandButton" }, false) },
    { "frmSettings", Of<frmSettings>() },
    { "frmDelete", Of<frmDelete>() },
    { "frmSpelling1", Of<frmSpelling1>() },
    { "frmEditSpell", Of<frmEditSpell>() },
    { "frmQuiz1", Of<frmQuiz1>() },
    { "frmEditQuiz", Of<frmEditQuiz>() },
    { "frmExpList", Of<frmExpList>() },
    { "frmImpList", Of<frmImpList>() },
};

struct Figures {
    QString type;
    QRect place;
    int letters;
};

std::map<QString, Figures> FiguresOf(const QWidget &window)
{
    std::map<QString, Figures> figures;
    for (const QWidget *control : window.findChildren<QWidget *>())
        if (control->parentWidget() == &window || qobject_cast<QGroupBox *>(control->parentWidget()))
            figures[control->objectName()] = { platform::Resizer::TypeOf(*control), control->geometry(),
                                               control->font().pixelSize() };
    return figures;
}

} // namespace

// How the controls of each screen follow the size of its window.
class TestResizing : public QObject {
    Q_OBJECT

private slots:
    void controlsScaleOrKeepTheirFigures_data()
    {
        QTest::addColumn<QString>("screen");
        for (const auto &[name, held] : kScreens)
            QTest::newRow(qPrintable(name)) << name;
    }
    void controlsScaleOrKeepTheirFigures()
    {
        QFETCH(QString, screen);
        Desk desk;
        const Held &held = kScreens.at(screen);
        held.shared().Load();
        QWidget &window = *held.shared().Window();
        const std::map<QString, Figures> design = FiguresOf(window);
        QVERIFY2(design.size() >= 4, "a screen that fills the display has more controls than this");
        held.shared().Show();
        // Three times as wide and twice as high, so that no figure is right by mistake.
        window.resize(2400, 1200);
        for (const auto &[name, now] : FiguresOf(window)) {
            const Figures &was = design.at(name);
            const bool isHeld = held.types.contains(was.type);
            const QRect place = was.place;
            QCOMPARE(std::pair(name, now.place.left()), std::pair(name, place.left() * 3));
            QCOMPARE(std::pair(name, now.place.top()),
                     std::pair(name, place.top() * (isHeld && held.keepsTop ? 1 : 2)));
            QCOMPARE(std::pair(name, now.place.size()),
                     std::pair(name, isHeld ? place.size() : QSize(place.width() * 3, place.height() * 2)));
            QCOMPARE(std::pair(name, now.letters), std::pair(name, was.letters * (isHeld ? 1 : 2)));
        }
    }
};

QTEST_MAIN(TestResizing)
#include "TestResizing.moc"

#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "platform/forms/Resizer.h"
#include "setup/frmChooseList1.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "support/Desk.h"

#include <QtTest>

using namespace tumblewick;
using platform::Resizer;
using support::Desk;

namespace {

struct Place {
    QString type;
    QRect rectangle;
    int fontSize;
};

} // namespace

// How the screens with lists follow the size of the display: which of their controls are scaled.
class TestScreenSizes : public QObject {
    Q_OBJECT

private slots:
    void controlsAreScaledButForThoseThatAreHeld_data()
    {
        QTest::addColumn<QStringList>("held"); // types that keep all but their left edge
        const QStringList none;
        QTest::newRow("frmList") << QStringList{ "CommandButton" };
        QTest::newRow("frmEdit") << QStringList{ "CommandButton", "Label" };
        QTest::newRow("frmChooseList1") << QStringList{ "CommandButton", "Label" };
        for (const char *screen : { "frmDelete", "frmSpelling1", "frmEditSpell", "frmQuiz1", "frmEditQuiz",
                                    "frmExpList", "frmImpList" })
            QTest::newRow(screen) << none;
    }
    void controlsAreScaledButForThoseThatAreHeld()
    {
        QFETCH(QStringList, held);
        Desk desk;
        desk.WriteSpelling("Pets", { "cat" });
        desk.WriteQuiz("Pets", { "Q_a_b_c_d_1_" });
        platform::Screen &screen = Prepared(QTest::currentDataTag());
        screen.Show();
        desk.Settle();
        QVERIFY(desk.boxes.All().empty());
        QWidget *window = screen.Window();
        window->resize(800, 600);
        const QMap<QString, Place> before = PlacesIn(*window);
        QVERIFY(before.size() >= 6);
        window->resize(1600, 1200);
        const QMap<QString, Place> after = PlacesIn(*window);
        QCOMPARE(after.keys(), before.keys());
        for (const QString &name : before.keys()) {
            const Place &was = before[name];
            const Place &is = after[name];
            if (held.contains(was.type)) {
                const QRect moved(QPoint(was.rectangle.left() * 2, was.rectangle.top()),
                                  was.rectangle.size());
                QVERIFY2(is.rectangle == moved, qPrintable(name));
                QVERIFY2(is.fontSize == was.fontSize, qPrintable(name));
            } else {
                const QRect scaled(was.rectangle.topLeft() * 2, was.rectangle.size() * 2);
                QVERIFY2(is.rectangle == scaled, qPrintable(name));
                QVERIFY2(is.fontSize == was.fontSize * 2, qPrintable(name));
            }
        }
    }

private:
    // The screen of that name, handed what it needs before it is shown.
    static platform::Screen &Prepared(const QString &name)
    {
        State().GameMode = kSpellingMode;
        if (name == "frmList")
            return frmList::Shared();
        if (name == "frmEdit") {
            frmEdit::Shared().ListType = kSpellList;
            return frmEdit::Shared();
        }
        if (name == "frmDelete") {
            frmDelete::Shared().ListType = kSpellList;
            return frmDelete::Shared();
        }
        if (name == "frmExpList") {
            frmExpList::Shared().ListType = kSpellList;
            return frmExpList::Shared();
        }
        if (name == "frmImpList") {
            frmImpList::Shared().ListType = kSpellList;
            return frmImpList::Shared();
        }
        if (name == "frmEditSpell") {
            frmEditSpell::Shared().EditFileName = "Pets";
            return frmEditSpell::Shared();
        }
        if (name == "frmEditQuiz") {
            frmEditQuiz::Shared().EditFileName = "Pets";
            return frmEditQuiz::Shared();
        }
        if (name == "frmSpelling1")
            return frmSpelling1::Shared();
        if (name == "frmQuiz1")
            return frmQuiz1::Shared();
        return frmChooseList1::Shared();
    }
    // The controls that have a name of ours, also those within frames.
    static QMap<QString, Place> PlacesIn(const QWidget &window)
    {
        QMap<QString, Place> places;
        for (const auto *control : window.findChildren<QWidget *>()) {
            const QWidget *parent = control->parentWidget();
            const bool isOurs = !control->objectName().isEmpty() && !control->objectName().startsWith("qt_");
            const bool isOnForm = parent == &window || Resizer::TypeOf(*parent) == "Frame";
            if (isOurs && isOnForm && !control->isWindow())
                places[control->objectName()] = { Resizer::TypeOf(*control), control->geometry(),
                                                  QFontInfo(control->font()).pixelSize() };
        }
        return places;
    }
};

QTEST_MAIN(TestScreenSizes)
#include "TestScreenSizes.moc"

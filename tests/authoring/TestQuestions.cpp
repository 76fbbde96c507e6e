#include "authoring/Questions.h"
#include "support/Desk.h"

#include <QTest>

using namespace tumblewick;
using platform::BoxAnswer;
using support::Desk;

// The questions that the authoring screens ask.
class TestQuestions : public QObject {
    Q_OBJECT

private slots:
    void aNameThatIsTaken_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<BoxAnswer>("answer");
        QTest::addColumn<bool>("mayReplace");
        QTest::newRow("free") << "Zoo" << false << BoxAnswer::No << true;
        QTest::newRow("taken, yes") << "Pets" << true << BoxAnswer::Yes << true;
        QTest::newRow("taken, no") << "Pets" << true << BoxAnswer::No << false;
        QTest::newRow("taken in another letter case") << "pETS" << true << BoxAnswer::No << false;
    }
    void aNameThatIsTaken()
    {
        QFETCH(QString, name);
        QFETCH(bool, asked);
        QFETCH(BoxAnswer, answer);
        Desk desk;
        desk.WriteSpelling("Pets", { "cat" });
        if (asked)
            desk.boxes.Expect("There is already a list called " + name +
                                  ". Do you want to overwrite it with this list?",
                              answer);
        QTEST(MayReplaceList(desk.folder.path() + "\\LISTS\\" + name, name), "mayReplace");
        QVERIFY(desk.boxes.AllAnswered());
        if (asked) {
            QCOMPARE(desk.boxes.All().front().buttons, platform::BoxButtons::YesNo);
            QCOMPARE(desk.boxes.All().front().title, QString("List Already Exists"));
        }
    }

    void whatWouldBeLost_data()
    {
        QTest::addColumn<BoxAnswer>("answer");
        QTest::addColumn<bool>("isConfirmed");
        QTest::newRow("yes") << BoxAnswer::Yes << true;
        QTest::newRow("no") << BoxAnswer::No << false;
    }
    void whatWouldBeLost()
    {
        QFETCH(BoxAnswer, answer);
        Desk desk;
        desk.boxes.Expect("Delete?", answer);
        QTEST(IsConfirmed("Delete?"), "isConfirmed");
        QCOMPARE(desk.boxes.All().front().buttons, platform::BoxButtons::YesNo);
        QVERIFY(desk.boxes.All().front().HasNoTitle());
    }

    void aNewList_data()
    {
        QTest::addColumn<bool>("dirty");
        QTest::addColumn<BoxAnswer>("answer");
        QTest::addColumn<bool>("canSave");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<bool>("mayLeave");
        QTest::newRow("nothing to save") << false << BoxAnswer::Cancel << true << false << false << true;
        QTest::newRow("yes") << true << BoxAnswer::Yes << true << true << true << true;
        QTest::newRow("yes, but it fails") << true << BoxAnswer::Yes << false << true << true << false;
        QTest::newRow("no") << true << BoxAnswer::No << true << true << false << true;
        QTest::newRow("cancel") << true << BoxAnswer::Cancel << true << true << false << false;
    }
    void aNewList()
    {
        QFETCH(bool, dirty);
        QFETCH(BoxAnswer, answer);
        QFETCH(bool, canSave);
        QFETCH(bool, asked);
        Desk desk;
        if (asked)
            desk.boxes.Expect("Save list?", answer);
        bool saved = false;
        const bool mayLeave = MayLeaveNewList(dirty, [&] {
            saved = true;
            return canSave;
        });
        QTEST(mayLeave, "mayLeave");
        QTEST(saved, "saved");
        QVERIFY(desk.boxes.AllAnswered());
        if (asked) {
            QCOMPARE(desk.boxes.All().front().buttons, platform::BoxButtons::YesNoCancel);
            QVERIFY(desk.boxes.All().front().HasNoTitle());
        }
    }

    void anEdit_data()
    {
        QTest::addColumn<QString>(
            "pending"); // e: an edit, a: an entry to add, each in capitals when it fails
        QTest::addColumn<BoxAnswer>("answer");
        QTest::addColumn<QStringList>("done");
        QTest::addColumn<bool>("mayLeave");
        QTest::newRow("nothing") << "" << BoxAnswer::Cancel << QStringList() << true;
        QTest::newRow("edit, yes") << "e" << BoxAnswer::Yes << QStringList({ "save" }) << true;
        QTest::newRow("edit, yes, fails") << "E" << BoxAnswer::Yes << QStringList({ "save" }) << false;
        QTest::newRow("edit, no") << "e" << BoxAnswer::No << QStringList() << true;
        QTest::newRow("edit, cancel") << "e" << BoxAnswer::Cancel << QStringList() << false;
        QTest::newRow("add, yes") << "a" << BoxAnswer::Yes << QStringList({ "add" }) << true;
        QTest::newRow("add, yes, fails") << "A" << BoxAnswer::Yes << QStringList({ "add" }) << false;
        QTest::newRow("both, yes") << "ea" << BoxAnswer::Yes << QStringList({ "save", "add" }) << true;
        QTest::newRow("both, the edit fails")
            << "Ea" << BoxAnswer::Yes << QStringList({ "save", "add" }) << false;
        QTest::newRow("both, the add fails")
            << "eA" << BoxAnswer::Yes << QStringList({ "save", "add" }) << false;
        QTest::newRow("both, no") << "ea" << BoxAnswer::No << QStringList() << true;
    }
    void anEdit()
    {
        QFETCH(QString, pending);
        QFETCH(BoxAnswer, answer);
        Desk desk;
        if (!pending.isEmpty())
            desk.boxes.Expect("Save Changes?", answer);
        QStringList done;
        const bool mayLeave = MayLeaveEditing({ [&] { return pending.contains('e', Qt::CaseInsensitive); },
                                                [&] {
                                                    done << "save";
                                                    return pending.contains('e');
                                                },
                                                [&] { return pending.contains('a', Qt::CaseInsensitive); },
                                                [&] {
                                                    done << "add";
                                                    return pending.contains('a');
                                                } });
        QTEST(mayLeave, "mayLeave");
        QTEST(done, "done");
        QVERIFY(desk.boxes.AllAnswered());
        if (!pending.isEmpty()) {
            QCOMPARE(desk.boxes.All().front().buttons, platform::BoxButtons::YesNoCancel);
            QVERIFY(desk.boxes.All().front().HasNoTitle());
        }
    }
};

QTEST_MAIN(TestQuestions)
#include "TestQuestions.moc"

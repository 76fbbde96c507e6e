#include "support/FakeBoxes.h"

#include <QTest>

using platform::BoxAnswer;
using platform::BoxButtons;

// The boxes that answer themselves notice what was not expected.
class TestFakeBoxes : public QObject {
    Q_OBJECT
private slots:
    void init() { m_problems.clear(); }
    void expectedBoxesAreAnsweredInOrder();
    void unexpectedBoxIsAProblem();
    void otherTextIsAProblem();
    void otherKindOfBoxIsAProblem();
    void answerWithoutAButtonIsAProblem();
    void boxThatNeverCameIsAProblem();

private:
    std::function<void(const QString &)> Note()
    {
        return [this](const QString &problem) { m_problems << problem; };
    }
    QStringList m_problems;
};

void TestFakeBoxes::expectedBoxesAreAnsweredInOrder()
{
    {
        support::FakeBoxes boxes(Note());
        bool wasOpen = false;
        boxes.Expect("Sure?", BoxAnswer::No, [&] { wasOpen = true; });
        boxes.ExpectInput("Enter Password", "abc");
        boxes.ExpectAny(BoxAnswer::Cancel);
        QCOMPARE(boxes.MessageBox("Sure?", BoxButtons::YesNo, "Title"), BoxAnswer::No);
        QVERIFY(wasOpen);
        QCOMPARE(boxes.InputBox("Enter Password"), "abc");
        QCOMPARE(boxes.MessageBox("Whatever", BoxButtons::YesNoCancel, ""), BoxAnswer::Cancel);
        QVERIFY(boxes.AllAnswered());
        QCOMPARE(boxes.Texts(), QStringList({ "Sure?", "Enter Password", "Whatever" }));
        QCOMPARE(boxes.LastText(), "Whatever");
        QCOMPARE(boxes.All()[0].title, "Title");
    }
    QCOMPARE(m_problems, QStringList());
}

void TestFakeBoxes::unexpectedBoxIsAProblem()
{
    support::FakeBoxes boxes(Note());
    QCOMPARE(boxes.MessageBox("Surprise", BoxButtons::Ok, ""), BoxAnswer::Ok);
    QCOMPARE(boxes.MessageBox("Surprise", BoxButtons::YesNo, ""), BoxAnswer::No);
    QCOMPARE(boxes.MessageBox("Surprise", BoxButtons::YesNoCancel, ""), BoxAnswer::Cancel);
    QCOMPARE(boxes.InputBox("Surprise"), QString());
    QCOMPARE(m_problems.size(), 4);
    QVERIFY(m_problems.first().contains("Surprise"));
}

void TestFakeBoxes::otherTextIsAProblem()
{
    {
        support::FakeBoxes boxes(Note());
        boxes.Expect("Sure?", BoxAnswer::Yes);
        QCOMPARE(boxes.MessageBox("Sure ?", BoxButtons::YesNo, ""), BoxAnswer::No);
        QCOMPARE(m_problems.size(), 1);
    }
    QCOMPARE(m_problems.size(), 2); // and the right one never came
}

void TestFakeBoxes::otherKindOfBoxIsAProblem()
{
    support::FakeBoxes boxes(Note());
    boxes.ExpectInput("Name", "abc");
    boxes.MessageBox("Name", BoxButtons::Ok, "");
    QCOMPARE(m_problems.size(), 1);
    QVERIFY(!boxes.AllAnswered());
}

void TestFakeBoxes::answerWithoutAButtonIsAProblem()
{
    support::FakeBoxes boxes(Note());
    boxes.Expect("Sure?", BoxAnswer::Cancel);
    QCOMPARE(boxes.MessageBox("Sure?", BoxButtons::YesNo, ""), BoxAnswer::No);
    QCOMPARE(m_problems.size(), 1);
}

void TestFakeBoxes::boxThatNeverCameIsAProblem()
{
    {
        support::FakeBoxes boxes(Note());
        boxes.Expect("Never");
    }
    QCOMPARE(m_problems.size(), 1);
    QVERIFY(m_problems.first().contains("Never"));
}

QTEST_APPLESS_MAIN(TestFakeBoxes)
#include "TestFakeBoxes.moc"

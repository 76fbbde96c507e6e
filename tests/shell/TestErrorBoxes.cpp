#include "shell/ErrorBoxes.h"

#include "support/PlainDesk.h"
#include "support/ReportText.h"

#include <QTest>

using namespace tumblewick;

// The two boxes for errors that a handler does not know.
class TestErrorBoxes : public QObject {
    Q_OBJECT
private slots:
    void fullReportGivesAddressNumberAndDescription();
    void fullReportGivesAgentNumbersSigned();
    void trappedWorkIsReportedAndEndsThere();
    void shortBoxGivesDescriptionAndNumber();
};

void TestErrorBoxes::fullReportGivesAddressNumberAndDescription()
{
    support::PlainDesk desk;
    desk.boxes.Expect("Tumblewick has detected a problem. Please email support@tumblewick.example \r\n"
                      " Please quote the following information 53 File not found\r\n"
                      "We apologise for this inconvenience");
    ErrorReport(platform::Error(platform::kFileNotFound));
    QVERIFY(desk.boxes.AllAnswered());
    QCOMPARE(desk.boxes.All().front().title, QString());
    QCOMPARE(desk.boxes.All().front().buttons, platform::BoxButtons::Ok);
    QVERIFY(!desk.process.Ended());
}

void TestErrorBoxes::fullReportGivesAgentNumbersSigned()
{
    support::PlainDesk desk;
    desk.boxes.Expect("Tumblewick has detected a problem. Please email support@tumblewick.example \r\n"
                      " Please quote the following information -2147213310 gone\r\n"
                      "We apologise for this inconvenience");
    ErrorReport(platform::Error(platform::kAgentRefuses, "gone"));
    QVERIFY(desk.boxes.AllAnswered());
}

void TestErrorBoxes::trappedWorkIsReportedAndEndsThere()
{
    support::PlainDesk desk;
    QStringList done;
    Trapped([&] { done << "sound"; });
    desk.boxes.Expect(support::ReportText(platform::kDiskFull));
    Trapped([&] {
        done << "before";
        throw platform::Error(platform::kDiskFull);
    });
    QCOMPARE(done, QStringList({ "sound", "before" }));
    QVERIFY(desk.boxes.AllAnswered());
    QVERIFY(!desk.process.Ended());
}

void TestErrorBoxes::shortBoxGivesDescriptionAndNumber()
{
    support::PlainDesk desk;
    desk.boxes.Expect("Path not found 76");
    ShortErrorBox(platform::Error(platform::kPathNotFound));
    QVERIFY(desk.boxes.AllAnswered());
    QVERIFY(!desk.process.Ended());
}

QTEST_MAIN(TestErrorBoxes)
#include "TestErrorBoxes.moc"

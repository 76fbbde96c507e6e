#include "support/FakeProcess.h"
#include "support/FakeTime.h"

#include <QFileInfo>
#include <QProcess>
#include <QTest>

// The end of the program.
class TestProcess : public QObject {
    Q_OBJECT
private slots:
    void endingLeavesAtOnceWithTheCode_data();
    void endingLeavesAtOnceWithTheCode();
    void applicationFolderIsThatOfTheProgram();
    void fakeNotesTheFirstCodeAndUnwinds();
};

void TestProcess::endingLeavesAtOnceWithTheCode_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("code");
    QTest::newRow("from the top") << "code" << 7;
    QTest::newRow("from within three waits") << "wait" << 5;
}

void TestProcess::endingLeavesAtOnceWithTheCode()
{
    QFETCH(QString, how);
    QFETCH(int, code);
    QProcess program;
    program.start(ENDING_PROGRAM, { how });
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), code);
    const QByteArray output = program.readAllStandardOutput();
    QVERIFY(output.contains("not flushed yet;"));
    QVERIFY(output.contains("nor this;"));
    QVERIFY(!output.contains("destructor"));
}

void TestProcess::applicationFolderIsThatOfTheProgram()
{
    QProcess program;
    program.setWorkingDirectory("/");
    program.start(ENDING_PROGRAM, { "folder" });
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 0);
    const QByteArray output = program.readAllStandardOutput();
    QVERIFY2(output.contains(QFileInfo(ENDING_PROGRAM).canonicalPath().toUtf8() + ";Tumblewick"),
             output.constData());
}

void TestProcess::fakeNotesTheFirstCodeAndUnwinds()
{
    support::FakeTime time;
    support::FakeProcess process(time);
    QVERIFY(!process.Ended());
    QVERIFY_EXCEPTION_THROWN(process.End(3), platform::ProgramEnded);
    QVERIFY_EXCEPTION_THROWN(process.End(4), platform::ProgramEnded);
    QCOMPARE(process.ExitCode(), std::optional(3));
    QVERIFY_EXCEPTION_THROWN(time.Pump(), platform::ProgramEnded);
    QVERIFY_EXCEPTION_THROWN(time.PumpPending(), platform::ProgramEnded);
    QCOMPARE(process.Title(), "Tumblewick");
    process.SetApplicationFolder("/somewhere");
    QCOMPARE(process.ApplicationFolder(), "/somewhere");
}

QTEST_APPLESS_MAIN(TestProcess)
#include "TestProcess.moc"

#include "platform/Error.h"
#include "shell/LastIntroduction.h"
#include "support/Desk.h"
#include "support/NumberRaised.h"

#include <QFile>
#include <QTest>

using namespace tumblewick;
using support::Desk;

// The record of the introduction that was drawn last.
class TestLastIntroduction : public QObject {
    Q_OBJECT

private slots:
    void aCandidateIsComparedAndRecorded_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("candidate");
        QTest::addColumn<bool>("repeated");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("the other") << QByteArray("0") << 1 << false << QByteArray("1");
        QTest::newRow("the same") << QByteArray("0") << 0 << true << QByteArray("0");
        QTest::newRow("back again") << QByteArray("1") << 0 << false << QByteArray("0");
        QTest::newRow("neither of the two") << QByteArray("7") << 0 << false << QByteArray("0");
        QTest::newRow("with a line end") << QByteArray("1\r\n") << 1 << true << QByteArray("1\r\n");
        QTest::newRow("with a line feed") << QByteArray("1\n") << 1 << true << QByteArray("1\n");
        QTest::newRow("blanks around it") << QByteArray(" 1 ") << 1 << true << QByteArray(" 1 ");
        QTest::newRow("a fraction") << QByteArray("0.5") << 0 << false << QByteArray("0");
        QTest::newRow("larger than 16 bits") << QByteArray("99999") << 1 << false << QByteArray("1");
    }
    void aCandidateIsComparedAndRecorded()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, candidate);
        Desk desk;
        desk.WriteFile("Lintro", content);
        QTEST(CheckLastIntro(candidate), "repeated");
        QTEST(desk.Content("Lintro"), "after");
    }

    void aFileThatCannotServeRaises_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("number");
        QTest::newRow("missing") << QByteArray() << 62;
        QTest::newRow("empty") << QByteArray("") << 62;
        QTest::newRow("an empty line") << QByteArray("\r\n1") << 13;
        QTest::newRow("a word") << QByteArray("one") << 13;
        QTest::newRow("odd bytes") << QByteArray("\xff\xfe") << 13;
    }
    void aFileThatCannotServeRaises()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, number);
        Desk desk;
        if (content.isNull())
            QVERIFY(QFile::remove(desk.folder.filePath("Lintro")));
        else
            desk.WriteFile("Lintro", content);
        QCOMPARE(support::NumberRaised([] { CheckLastIntro(0); }), number);
    }

    void aMissingFileIsMadeEmpty()
    {
        Desk desk;
        QVERIFY(QFile::remove(desk.folder.filePath("Lintro")));
        QVERIFY_EXCEPTION_THROWN(CheckLastIntro(0), platform::Error);
        QCOMPARE(desk.Content("Lintro"), QByteArray(""));
    }
};

QTEST_MAIN(TestLastIntroduction)
#include "TestLastIntroduction.moc"

#include "platform/Error.h"
#include "shell/SettingsFile.h"
#include "support/Desk.h"
#include "support/NumberRaised.h"

#include <QFile>
#include <QTest>

using namespace tumblewick;
using support::Desk;

// The text file that holds the settings: two lines, which are there or not.
class TestSettingsFile : public QObject {
    Q_OBJECT

private slots:
    void aFileIsRead_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("playIntro");
        QTest::addColumn<QString>("password");
        QTest::newRow("as installed") << QByteArray("Intro\r\n\r\n") << true << "";
        QTest::newRow("off") << QByteArray("No Intro\r\n\r\n") << false << "";
        QTest::newRow("another case") << QByteArray("intro\r\n\r\n") << false << "";
        QTest::newRow("a blank behind") << QByteArray("Intro \r\n\r\n") << false << "";
        QTest::newRow("nothing on the first line") << QByteArray("\r\nsecret\r\n") << false << "secret";
        QTest::newRow("password") << QByteArray("Intro\r\nS3cret word\r\n") << true << "S3cret word";
        QTest::newRow("blanks belong to it") << QByteArray("Intro\r\n a \r\n") << true << " a ";
        QTest::newRow("no end behind the second line") << QByteArray("Intro\r\nx") << true << "x";
        QTest::newRow("line feeds alone") << QByteArray("Intro\nx\n") << true << "x";
        QTest::newRow("a third line") << QByteArray("Intro\r\nx\r\ny\r\n") << true << "x";
        QTest::newRow("single bytes")
            << QByteArray("Intro\r\ncaf\xe9\r\n") << true << QString::fromUtf8("café");
        QTest::newRow("odd bytes") << QByteArray("Intro\r\n\xff\x01\r\n") << true
                                   << QString::fromUtf8("ÿ\x01");
    }
    void aFileIsRead()
    {
        QFETCH(QByteArray, content);
        Desk desk;
        desk.WriteFile("Set", content);
        const Settings settings = ReadSettings();
        QTEST(settings.playIntro, "playIntro");
        QTEST(settings.authoringPassword, "password");
    }

    void aFileThatCannotServeRaises_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("number");
        QTest::newRow("missing") << QByteArray() << 53;
        QTest::newRow("empty") << QByteArray("") << 62;
        QTest::newRow("one line") << QByteArray("Intro\r\n") << 62;
        QTest::newRow("one line without end") << QByteArray("Intro") << 62;
    }
    void aFileThatCannotServeRaises()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, number);
        Desk desk;
        if (content.isNull())
            QVERIFY(QFile::remove(desk.folder.filePath("Set")));
        else
            desk.WriteFile("Set", content);
        QCOMPARE(support::NumberRaised([] { ReadSettings(); }), number);
    }

    void whatIsWrittenIsTwoLines()
    {
        Desk desk;
        WriteSettings({ true, "S3cret" });
        QCOMPARE(desk.Content("Set"), QByteArray("Intro\r\nS3cret\r\n"));
        WriteSettings({ false, "" });
        QCOMPARE(desk.Content("Set"), QByteArray("No Intro\r\n\r\n"));
        WriteSettings({ false, QString::fromUtf8("café") });
        QCOMPARE(desk.Content("Set"), QByteArray("No Intro\r\ncaf\xe9\r\n"));
    }

    void aMissingFileIsNotMade()
    {
        Desk desk;
        QVERIFY(QFile::remove(desk.folder.filePath("Set")));
        QVERIFY_EXCEPTION_THROWN(WriteSettings({ true, "" }), platform::Error);
        QVERIFY(!QFile::exists(desk.folder.filePath("Set")));
    }
};

QTEST_MAIN(TestSettingsFile)
#include "TestSettingsFile.moc"

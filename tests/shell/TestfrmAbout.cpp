#include "shell/SystemInformation.h"
#include "shell/frmAbout.h"
#include "shell/frmMenu1.h"
#include "support/Desk.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTest>

using namespace tumblewick;
using platform::RegistryValue;
using support::Desk;

namespace {

const QString kKey = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO");
const QString kLocation = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location");
const QString kUnavailable = QStringLiteral("System Information Is Unavailable At This Time");

} // namespace

// The About box, the information tool and the web link.
class TestfrmAbout : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void titleAndVersionAreShownAnewEachTime()
    {
        frmMenu1::Shared().Show();
        m_desk->Settle();
        for (int time = 0; time < 2; ++time) {
            m_desk->Press("cmdAbout");
            QCOMPARE(frmAbout::Shared().Window()->windowTitle(), QString("About Tumblewick"));
            QCOMPARE(m_desk->Find<QLabel>("lblVersion")->text(), QString("Version 1.0.9"));
            QCOMPARE(m_desk->Find<QLabel>("lblTitle")->text(), QString("Tumblewick"));
            QVERIFY(m_desk->Find<QLabel>("lblDescription")
                        ->text()
                        .startsWith("Educational Software for children of all ages."));
            QCOMPARE(m_desk->Find<QAbstractButton>("cmdOK")->text(), QString("&OK"));
            QCOMPARE(m_desk->Find<QAbstractButton>("Command1")->text(), QString("&Sys Info"));
            QVERIFY(frmMenu1::Shared().IsLoaded());
            m_desk->Press("cmdOK");
            QVERIFY(!frmAbout::Exists());
            QVERIFY(frmMenu1::Shared().IsActive());
        }
    }

    void theMenuUnderItStaysLiveAndCanQuit()
    {
        frmMenu1::Shared().Show();
        m_desk->Settle();
        m_desk->Press("cmdAbout");
        frmMenu1::Shared().Window()->findChild<QAbstractButton *>("Command1")->click();
        m_desk->Settle();
        QVERIFY(m_desk->process.Ended());
    }

    void itLeavesTheIntroductionAndHelpAlone()
    {
        frmMenu1::Shared().Show();
        m_desk->Settle();
        frmMenu1::Shared().IntroCancelled = false;
        m_desk->Press("cmdHelp");
        m_desk->Press("cmdAbout");
        m_desk->Press("cmdOK");
        QVERIFY(!frmMenu1::Shared().IntroCancelled);
        QCOMPARE(int(m_desk->help.Open().size()), 1);
    }

    void theToolIsFound_data()
    {
        QTest::addColumn<bool>("hasPath");
        QTest::addColumn<bool>("hasLocation");
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<QString>("started"); // below the application folder
        QTest::newRow("by its path") << true << true << true << "/tool";
        QTest::newRow("by its folder") << false << true << true << "\\MSINFO32.EXE";
        QTest::newRow("the folder lacks it") << false << true << false << "";
        QTest::newRow("not at all") << false << false << true << "";
    }
    void theToolIsFound()
    {
        QFETCH(bool, hasPath);
        QFETCH(bool, hasLocation);
        QFETCH(bool, hasFile);
        QFETCH(QString, started);
        const QByteArray folder = m_desk->folder.path().toUtf8();
        if (hasPath)
            m_desk->desktop.registered[kKey + "|PATH"] = { RegistryValue::kText, folder + "/tool" + '\0' };
        if (hasLocation)
            m_desk->desktop.registered[kLocation + "|MSINFO"] = { RegistryValue::kText, folder + '\0' };
        if (hasFile)
            m_desk->WriteFile("MSINFO32.EXE", "");
        if (started.isEmpty())
            m_desk->boxes.Expect(kUnavailable);
        StartSysInfo();
        QCOMPARE(m_desk->desktop.started, started.isEmpty() ? QStringList() : QStringList(folder + started));
    }

    void aToolThatDoesNotStartIsUnavailable()
    {
        m_desk->desktop.registered[kKey + "|PATH"] = { RegistryValue::kText, "/gone" };
        m_desk->desktop.startFailure = platform::kFileNotFound;
        m_desk->boxes.Expect(kUnavailable);
        frmAbout::Shared().Show();
        m_desk->Settle();
        m_desk->Press("Command1");
        QVERIFY(frmAbout::Shared().IsActive());
    }

    void aValueIsRead_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QString>("value");
        QTest::newRow("text") << 1 << QByteArray("abc") << true << "abc";
        QTest::newRow("text with its end") << 1 << QByteArray("abc\0", 4) << true << "abc";
        QTest::newRow("empty") << 1 << QByteArray("") << true << "";
        QTest::newRow("in the code page") << 1 << QByteArray("caf\xe9") << true << QString::fromUtf8("café");
        QTest::newRow("as long as fits") << 1 << QByteArray(1024, 'x') << true << QString(1024, 'x');
        QTest::newRow("longer") << 1 << QByteArray(1025, 'x') << false << "";
        QTest::newRow("number") << 4 << QByteArray("\x10\x20\x30\x40", 4) << true << "1076895760";
        QTest::newRow("each byte in its own digits")
            << 4 << QByteArray("\x01\x02\x03\x04", 4) << true << "17185";
        QTest::newRow("zeros before it") << 4 << QByteArray("\x10\0\0\0", 4) << true << "16";
        QTest::newRow("another type") << 3 << QByteArray("abc") << true << "before";
    }
    void aValueIsRead()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, data);
        m_desk->desktop.registered["key|name"] = { type, data };
        QString value = "before";
        QTEST(GetKeyValue("key", "name", value), "found");
        QTEST(value, "value");
    }

    void aMissingValueEmptiesTheText()
    {
        QString value = "before";
        QVERIFY(!GetKeyValue("key", "name", value));
        QCOMPARE(value, QString());
    }

    void eachClickOnTheLinkMakesABrowser()
    {
        frmAbout::Shared().Show();
        m_desk->Settle();
        m_desk->Press("Label1");
        m_desk->Press("Label1");
        const QStringList one = { "new", "visible", "https://www.tumblewick.example/" };
        QCOMPARE(m_desk->desktop.browsing, one + one);
    }

    void withoutABrowserTheShortBoxComes()
    {
        m_desk->desktop.browserFailure = platform::kNoSuchComponent;
        m_desk->boxes.Expect("ActiveX component can't create object 429");
        frmAbout::Shared().Show();
        m_desk->Settle();
        m_desk->Press("Label1");
        QVERIFY(frmAbout::Shared().IsActive());
    }

private:
    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestfrmAbout)
#include "TestfrmAbout.moc"

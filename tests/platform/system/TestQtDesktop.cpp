#include "platform/Error.h"
#include "platform/system/QtDesktop.h"
#include "support/NumberRaised.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using platform::QtDesktop;
using support::NumberRaised;

namespace {

const QString kKey = QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO");

} // namespace

// What the program finds and starts on the user's desktop; here the desktop is a folder of small programs,
// each of which writes down how it was called.
class TestQtDesktop : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_folder.emplace();
        QVERIFY(QDir(m_folder->path()).mkdir("programs"));
        m_path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(Program(QString())));
    }
    void cleanup() { qputenv("PATH", m_path); }

    void theFirstInformationToolIsRegistered()
    {
        const QtDesktop desktop;
        QVERIFY(!desktop.LookUp(kKey, "PATH"));
        Install("xfce4-taskmanager");
        QCOMPARE(Registered(desktop), Program("xfce4-taskmanager"));
        Install("hardinfo");
        QCOMPARE(Registered(desktop), Program("hardinfo"));
        QCOMPARE(desktop.LookUp(kKey.toLower(), "path")->type, int(platform::RegistryValue::kText));
    }

    void nothingElseIsRegistered()
    {
        Install("hardinfo");
        const QtDesktop desktop;
        QVERIFY(!desktop.LookUp(kKey, "MSINFO"));
        QVERIFY(!desktop.LookUp("SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO"));
    }

    void aProgramIsStartedAndNotWaitedFor()
    {
        Install("slow", "sleep 0.4\n");
        QElapsedTimer time;
        time.start();
        QtDesktop().Start(Program("slow"));
        QVERIFY(time.elapsed() < 350);
        QTRY_COMPARE(Calls(), QString("slow\n"));
    }

    void aProgramWithBlanksInItsPathIsStarted()
    {
        Install("a tool of mine");
        QtDesktop().Start(Program("a tool of mine"));
        QTRY_COMPARE(Calls(), QString("a tool of mine\n"));
    }

    void aProgramThatIsNotThereRaises53()
    {
        QCOMPARE(NumberRaised([this] { QtDesktop().Start(Program("gone")); }),
                 qint32(platform::kFileNotFound));
    }

    void aFileThatIsNoProgramRaises5()
    {
        QFile text(Program("text"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("no program");
        text.close();
        QCOMPARE(NumberRaised([this] { QtDesktop().Start(Program("text")); }),
                 qint32(platform::kInvalidCall));
    }

    void theBrowserIsTheOneOfTheDesktop()
    {
        Install("sensible-browser");
        Install("xdg-open");
        const auto browser = QtDesktop().NewBrowser();
        browser->SetVisible(true);
        QTest::qWait(100);
        QCOMPARE(Calls(), QString()); // it comes with its page
        browser->Navigate("https://www.tumblewick.example/?a=b&c=$HOME");
        QTRY_COMPARE(Calls(), QString("xdg-open https://www.tumblewick.example/?a=b&c=$HOME\n"));
    }

    void withoutABrowser429IsRaised()
    {
        QCOMPARE(NumberRaised([] { QtDesktop().NewBrowser(); }), qint32(platform::kNoSuchComponent));
        Install("xdg-open");
        const auto browser = QtDesktop().NewBrowser();
        QVERIFY(QFile::remove(Program("xdg-open")));
        QCOMPARE(NumberRaised([&] { browser->Navigate("https://www.tumblewick.example/"); }),
                 qint32(platform::kNoSuchComponent));
    }

private:
    QString Program(const QString &name) const
    {
        return m_folder->filePath("programs") + (name.isEmpty() ? QString() : '/' + name);
    }
    void Install(const QString &name, const QByteArray &first = {})
    {
        QFile program(Program(name));
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\nPATH=/usr/bin:/bin\n" + first + "echo \"${0##*/}${1:+ }$*\" >> '" +
                      m_folder->filePath("calls").toUtf8() + "'\n");
        program.close();
        QVERIFY(program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    QString Calls() const
    {
        QFile calls(m_folder->filePath("calls"));
        return calls.open(QIODevice::ReadOnly) ? QString::fromUtf8(calls.readAll()) : QString();
    }
    static QString Registered(const QtDesktop &desktop)
    {
        const auto value = desktop.LookUp(kKey, "PATH");
        return value && value->data.endsWith('\0') ? QFile::decodeName(value->data.chopped(1)) : QString();
    }

    std::optional<QTemporaryDir> m_folder;
    QByteArray m_path;
};

QTEST_GUILESS_MAIN(TestQtDesktop)
#include "TestQtDesktop.moc"

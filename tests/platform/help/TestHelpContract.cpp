// What screens may count on when they ask for help: run against the help window and against the fake.

#include "ChmWriter.h"
#include "platform/files/DiskFiles.h"
#include "platform/help/HelpPage.h"
#include "platform/help/HelpWindow.h"
#include "platform/help/QtHelp.h"
#include "support/FakeHelp.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace platform;

class TestHelpContract : public QObject {
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("real");
        QTest::newRow("fake") << false;
        QTest::newRow("real") << true;
    }
    void init()
    {
        QFile file(m_folder.filePath("Help.chm"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(WriteChm({ "Help", "Introduction.htm", "", "", "Help" },
                            { { "Introduction.htm", "<h1>Welcome</h1>" },
                              { "Adding, Editing and Deleting Lists.htm", "<h1>Lists</h1>" } }));
        QFETCH_GLOBAL(bool, real);
        if (real) {
            m_help = std::make_unique<QtHelp>(m_files);
        } else {
            auto fake = std::make_unique<support::FakeHelp>();
            m_fake = fake.get();
            m_help = std::move(fake);
        }
    }
    void cleanup()
    {
        m_help.reset();
        m_fake = nullptr;
        QVERIFY(Windows().isEmpty());
    }

    void aTopicIsShownAtOnce()
    {
        m_help->ShowTopic(m_file, "Adding, Editing and Deleting Lists.htm");
        QCOMPARE(Shown(), QString("Adding, Editing and Deleting Lists.htm"));
    }

    void theLastOfManyIsShown()
    {
        for (int time = 0; time < 50; ++time) {
            m_help->ShowTopic(m_file, "Adding, Editing and Deleting Lists.htm");
            m_help->ShowTopic(m_file, "Introduction.htm");
        }
        QCOMPARE(Shown(), QString("Introduction.htm"));
    }

    void closingAllLeavesNothingOpen()
    {
        m_help->CloseAll();
        QCOMPARE(Shown(), QString());
        m_help->ShowTopic(m_file, "Introduction.htm");
        m_help->ShowTopic(m_file, "Introduction.htm");
        m_help->CloseAll();
        QCOMPARE(Shown(), QString());
        m_help->CloseAll();
        m_help->ShowTopic(m_file, "Introduction.htm");
        QCOMPARE(Shown(), QString("Introduction.htm"));
    }

    void missingThingsRaiseNoError()
    {
        m_help->ShowTopic(m_folder.path() + "\\Nothing.chm", "Introduction.htm");
        QCOMPARE(Shown(), QString("Introduction.htm"));
        m_help->ShowTopic(m_file, "Nothing.htm");
        QCOMPARE(Shown(), QString("Nothing.htm"));
        m_help->ShowTopic("", "");
        m_help->CloseAll();
        QCOMPARE(Shown(), QString());
    }

private:
    static QList<HelpWindow *> Windows()
    {
        QList<HelpWindow *> windows;
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *window = qobject_cast<HelpWindow *>(widget))
                windows << window;
        return windows;
    }
    // The topic that the user sees; nothing when no help is open.
    QString Shown() const
    {
        if (m_fake)
            return m_fake->Open().empty() ? QString() : m_fake->Open().back().topic;
        for (const HelpWindow *window : Windows())
            if (window->isVisible())
                return window->findChild<HelpPage *>("page")->Opened();
        return {};
    }

    QTemporaryDir m_folder;
    // As the game writes it: with a backslash, and in letters of another case.
    const QString m_file = m_folder.path() + "\\help.chm";
    DiskFiles m_files;
    std::unique_ptr<Help> m_help;
    support::FakeHelp *m_fake = nullptr;
};

QTEST_MAIN(TestHelpContract)
#include "TestHelpContract.moc"

#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "game/frmSpell1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "platform/forms/ScreenStack.h"
#include "setup/frmChooseList1.h"
#include "setup/frmNumPlayers1.h"
#include "setup/frmPlayerNames1.h"
#include "shell/Appearance.h"
#include "shell/HelpTopics.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmAbout.h"
#include "shell/frmMenu1.h"
#include "shell/frmSettings.h"
#include "shell/frmSplash.h"
#include "support/ControlWalk.h"
#include "support/Desk.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTest>
#include <map>
#include <vector>

using namespace tumblewick;
using support::Desk;

namespace {

// A screen as it stands before somebody who has a keyboard and perhaps a screen reader.
struct Stand {
    const char *name;
    std::function<void(Desk &)> open;
    const char *first; // the control that has the keyboard first
    const char *enter; // the button that Enter presses in a box or a list; none where empty
    QString topic;     // of its help
};

template <class T>
void Open(Desk &desk)
{
    T::Shared().Show();
    desk.Settle();
}

template <class T>
void OpenFor(Desk &desk, const QString &kind)
{
    T::Shared().ListType = kind;
    Open<T>(desk);
}

template <class T>
void OpenList(Desk &desk)
{
    T::Shared().EditFileName = QStringLiteral("Animals");
    Open<T>(desk);
}

void OpenNames(Desk &desk, int players)
{
    State().NumPlayers = players;
    Open<frmPlayerNames1>(desk);
}

void OpenChoice(Desk &desk, const QString &mode)
{
    State().GameMode = mode;
    Open<frmChooseList1>(desk);
}

void AskQuestion(Desk &desk)
{
    desk.BeginQuiz({ QStringLiteral("Ann") },
                   { QStringLiteral("How many legs has a spider?_Four_Six_Eight_Ten_3_"),
                     QStringLiteral("What do bees make?_Milk_Honey_Jam_Tea_2_") });
    desk.Rest();
}

const std::vector<Stand> kStands = {
    { "frmSplash", [](Desk &) { frmSplash::Shared().Show(); }, "", "", {} },
    { "frmMenu1", Open<frmMenu1>, "cmdPlay", "", kIntroductionTopic },
    { "frmSettings", Open<frmSettings>, "optNoIntro", "", kSettingsTopic },
    { "frmAbout", Open<frmAbout>, "cmdOK", "", {} },
    { "frmNumPlayers1", Open<frmNumPlayers1>, "opt1", "cmdNext", kPlayingTopic },
    { "frmPlayerNames1 for one", [](Desk &desk) { OpenNames(desk, 1); }, "txtPlayer_0", "cmdNext",
      kPlayingTopic },
    { "frmPlayerNames1 for five", [](Desk &desk) { OpenNames(desk, 5); }, "txtPlayer_0", "cmdNext",
      kPlayingTopic },
    { "frmChooseList1, spelling", [](Desk &desk) { OpenChoice(desk, kSpellingMode); }, "File2", "cmdNext",
      kPlayingTopic },
    { "frmChooseList1, quiz", [](Desk &desk) { OpenChoice(desk, kQuizMode); }, "File2", "cmdNext",
      kPlayingTopic },
    { "frmSpell1, spelling",
      [](Desk &desk) {
          desk.BeginSpelling({ QStringLiteral("Ann") }, { "cat", "dog" });
      },
      "txtAnswer", "cmdGo", kPlayingTopic },
    { "frmSpell1, two players",
      [](Desk &desk) {
          desk.BeginSpelling({ QStringLiteral("Ann"), QStringLiteral("Bob") }, { "cat", "dog" });
      },
      "txtAnswer", "cmdGo", kPlayingTopic },
    { "frmSpell1, quiz", AskQuestion, "cmdGo", "cmdGo", kPlayingTopic },
    { "frmList", Open<frmList>, "cmdNewSpell", "", kListsTopic },
    { "frmEdit", [](Desk &desk) { OpenFor<frmEdit>(desk, kSpellList); }, "File1", "cmdOK", kListsTopic },
    { "frmEdit, quiz", [](Desk &desk) { OpenFor<frmEdit>(desk, kQuizList); }, "File1", "cmdOK", kListsTopic },
    { "frmDelete", [](Desk &desk) { OpenFor<frmDelete>(desk, kSpellList); }, "File1", "", kListsTopic },
    { "frmSpelling1", Open<frmSpelling1>, "txtName", "", kNewSpellingListTopic },
    { "frmEditSpell", OpenList<frmEditSpell>, "List", "", kEditSpellingListTopic },
    { "frmQuiz1", Open<frmQuiz1>, "txtName", "", kNewQuizTopic },
    { "frmEditQuiz", OpenList<frmEditQuiz>, "lvwList", "", kEditQuizTopic },
    { "frmExpList", [](Desk &desk) { OpenFor<frmExpList>(desk, kSpellList); }, "FileList", "cmdExport",
      kTransferTopic },
    { "frmImpList", [](Desk &desk) { OpenFor<frmImpList>(desk, kQuizList); }, "Dir1", "cmdImport",
      kTransferTopic },
};

QWidget &Front()
{
    return *platform::WindowInFront();
}

} // namespace

// Every screen by the keyboard alone, and as a screen reader tells of it.
class TestKeyboard : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ApplyAppearance(*qApp); }
    void init()
    {
        m_desk.emplace();
        m_desk->WriteSpelling("Animals", { "cat", "dog_dogg" });
        m_desk->WriteQuiz("Animals", { "What do bees make?_Milk_Honey_Jam_Tea_2_" });
        m_pressed.clear();
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void everyControlIsReachedAndToldOf_data() { Stands(); }
    void everyControlIsReachedAndToldOf()
    {
        Enter();
        QCOMPARE(support::FaultsForKeyboardAndReader(Front()).join('\n'), QString());
    }

    void theKeyboardBeginsWhereOneBegins_data() { Stands(); }
    void theKeyboardBeginsWhereOneBegins()
    {
        const Stand &stand = Enter();
        const QWidget *focus = Front().focusWidget();
        QCOMPARE(focus ? focus->objectName() : QString(), QString(stand.first));
    }

    void enterAndSpacePressTheButtonThatHasTheKeyboard_data() { Stands(); }
    void enterAndSpacePressTheButtonThatHasTheKeyboard()
    {
        Enter();
        const QList<QPushButton *> buttons = ListenToButtons();
        for (QPushButton *button : buttons) {
            button->setFocus();
            for (const Qt::Key key : { Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space })
                QTest::keyClick(button, key);
            QCOMPARE(m_pressed, QStringList(3, button->objectName()));
            m_pressed.clear();
        }
        QCOMPARE(buttons.isEmpty(), QTest::currentDataTag() == QString("frmSplash"));
    }

    void enterElsewherePressesTheDefaultButtonOrNone_data() { Stands(); }
    void enterElsewherePressesTheDefaultButtonOrNone()
    {
        const Stand &stand = Enter();
        ListenToButtons();
        for (QWidget *control : support::Controls(Front())) {
            // Enter opens a folder in the list of folders, and breaks the line in a question.
            if (qobject_cast<QPushButton *>(control) || control->inherits("platform::FolderList") ||
                control->inherits("platform::MultiLineBox"))
                continue;
            control->setFocus();
            QTest::keyClick(control, Qt::Key_Return);
            const QString enter = stand.enter;
            QCOMPARE(m_pressed, enter.isEmpty() ? QStringList() : QStringList(enter));
            m_pressed.clear();
        }
    }

    void arrowKeysGoRoundTheOptions_data()
    {
        QTest::addColumn<QString>("stand");
        QTest::addColumn<QStringList>("options");
        QTest::newRow("frmNumPlayers1")
            << "frmNumPlayers1" << QStringList{ "opt1", "opt2", "opt3", "opt4", "opt5" };
        QTest::newRow("frmSettings") << "frmSettings" << QStringList{ "optNoIntro", "optIntro" };
    }
    void arrowKeysGoRoundTheOptions()
    {
        QFETCH(QStringList, options);
        Enter();
        QVERIFY(QTest::qWaitForWindowActive(&Front()));
        const auto go = [this](Qt::Key key) {
            QTest::keyClick(Front().focusWidget(), key);
            const auto *option = qobject_cast<QRadioButton *>(Front().focusWidget());
            return option && option->isChecked() ? option->objectName() : QString();
        };
        for (const Qt::Key forward : { Qt::Key_Right, Qt::Key_Down })
            for (int step = 1; step <= options.size(); ++step)
                QCOMPARE(go(forward), options[step % options.size()]);
        for (const Qt::Key back : { Qt::Key_Left, Qt::Key_Up })
            for (qsizetype step = options.size() - 1; step >= 0; --step)
                QCOMPARE(go(back), options[step]);
    }

    // Nothing that was typed is lost by it, and no child leaves a game by accident.
    void escapeLeavesTheScreenAsItIs_data() { Stands(); }
    void escapeLeavesTheScreenAsItIs()
    {
        Enter();
        if (QTest::currentDataTag() == QString("frmAbout"))
            return; // a box, which goes with it: see there
        const QWidget *window = &Front();
        ListenToButtons();
        for (QWidget *control : support::Controls(Front())) {
            control->setFocus();
            QTest::keyClick(control, Qt::Key_Escape);
            m_desk->Settle();
            QCOMPARE(platform::WindowInFront(), window);
            QVERIFY(window->isVisible());
        }
        QCOMPARE(m_pressed, QStringList());
        QVERIFY(!m_desk->process.Ended());
    }

    void escapeClosesTheAboutBox()
    {
        Open<frmMenu1>(*m_desk);
        m_desk->Press("cmdAbout");
        QVERIFY(frmAbout::Shared().IsActive());
        QVERIFY(QTest::qWaitForWindowActive(&Front()));
        QTest::keyClick(&Front(), Qt::Key_Escape);
        m_desk->Settle();
        QVERIFY(!frmAbout::Exists());
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void aLetterWithAltPressesItsButton_data() { Stands(); }
    void aLetterWithAltPressesItsButton()
    {
        Enter();
        if (QTest::currentDataTag() != QString("frmSplash"))
            QVERIFY(QTest::qWaitForWindowActive(&Front()));
        const QList<QPushButton *> buttons = ListenToButtons();
        std::map<QString, QList<QPushButton *>> letters;
        for (QPushButton *button : buttons)
            if (const QKeySequence keys = QKeySequence::mnemonic(button->text()); !keys.isEmpty())
                letters[keys.toString()] << button;
        for (const auto &[keys, owners] : letters) {
            const int key = QKeySequence(keys)[0].key();
            QTest::keyClick(&Front(), static_cast<Qt::Key>(key), Qt::AltModifier);
            if (owners.size() == 1) {
                QTRY_COMPARE(m_pressed, QStringList(owners[0]->objectName()));
            } else {
                // The menu has two captions with an S: the letter goes from one to the other, Enter presses.
                QCOMPARE(keys, QString("Alt+S"));
                QCOMPARE(QString(Front().objectName()), QString("frmMenu1"));
                QSet<QWidget *> visited;
                for (int time = 0; time < owners.size(); ++time) {
                    visited << Front().focusWidget();
                    QTest::keyClick(&Front(), static_cast<Qt::Key>(key), Qt::AltModifier);
                }
                QCOMPARE(visited, QSet<QWidget *>(owners.begin(), owners.end()));
                QCOMPARE(m_pressed, QStringList());
            }
            m_pressed.clear();
        }
    }

    void helpOpensTheTopicOfTheScreen_data() { Stands(); }
    void helpOpensTheTopicOfTheScreen()
    {
        const Stand &stand = Enter();
        auto *help = Front().findChild<QPushButton *>("cmdHelp");
        QCOMPARE(help == nullptr, stand.topic.isEmpty());
        if (!help)
            return;
        help->click();
        QCOMPARE(int(m_desk->help.Open().size()), 1);
        QCOMPARE(m_desk->help.Open().front().file, m_desk->folder.path() + "\\TumblewickHelp.chm");
        QCOMPARE(m_desk->help.Open().front().topic, stand.topic);
        QVERIFY(Front().isVisible());
    }

    void theTipsOnPronunciationHaveATopicOfTheirOwn_data()
    {
        QTest::addColumn<QString>("stand");
        QTest::addColumn<QString>("button");
        QTest::newRow("frmSpelling1") << "frmSpelling1"
                                      << "Command5";
        QTest::newRow("frmEditSpell") << "frmEditSpell"
                                      << "cmdTips";
    }
    void theTipsOnPronunciationHaveATopicOfTheirOwn()
    {
        QFETCH(QString, button);
        Enter();
        m_desk->Press(button);
        QCOMPARE(m_desk->help.Open().front().topic, QString("Tips on Pronunciation.htm"));
    }

    void aBoxIsToldOfByTheLabelBesideIt()
    {
        OpenNames(*m_desk, 1);
        const auto *box = m_desk->Find<QLineEdit>("txtPlayer_0");
        QCOMPARE(box->accessibleName(), QString("Enter your name"));
        OpenNames(*m_desk, 2);
        OpenChoice(*m_desk, kQuizMode);
        QCOMPARE(m_desk->Find<QLabel>("Label1")->text(), QString("Select a Quiz"));
        QCOMPARE(m_desk->Find<QWidget>("File2")->accessibleName(), QString("Select a Quiz"));
    }

private:
    static void Stands()
    {
        QTest::addColumn<QString>("stand");
        for (const Stand &stand : kStands)
            QTest::newRow(stand.name) << stand.name;
    }
    const Stand &Enter()
    {
        const QString name = *static_cast<const QString *>(QTest::qData("stand", qMetaTypeId<QString>()));
        const auto found = std::find_if(kStands.begin(), kStands.end(),
                                        [&name](const Stand &stand) { return name == stand.name; });
        found->open(*m_desk);
        return *found;
    }
    // Cuts the buttons off from what they do, and notes which of them is pressed.
    QList<QPushButton *> ListenToButtons()
    {
        QList<QPushButton *> buttons;
        for (QWidget *control : support::Controls(Front())) {
            auto *button = qobject_cast<QPushButton *>(control);
            if (!button)
                continue;
            QObject::disconnect(button, &QPushButton::clicked, nullptr, nullptr);
            QObject::connect(button, &QPushButton::clicked, this,
                             [this, button] { m_pressed << button->objectName(); });
            buttons << button;
        }
        return buttons;
    }

    std::optional<Desk> m_desk;
    QStringList m_pressed;
};

QTEST_MAIN(TestKeyboard)
#include "TestKeyboard.moc"

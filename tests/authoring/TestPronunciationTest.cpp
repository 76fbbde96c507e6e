#include "authoring/PronunciationTest.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "authoring/frmSpelling1.h"
#include "platform/Error.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Desk.h"

#include <QFrame>
#include <QLineEdit>
#include <QTest>
#include <QTreeView>

using namespace tumblewick;
using platform::TwipsRect;
using support::Desk;

namespace {

const QString kLongTip =
    "Merlin: If I'm in your way just click on me, hold the mouse button down and drag me out of the way.";
const QString kShortTip = "Merlin: If I'm in your way just click on me and drag me.";
const QString kSoundCard =
    "Tumble Wick has detected a problem which is probably related to your soundcard. Please check that your "
    "soundcard is working correctly and the soundcard drivers are installed properly";

} // namespace

// Merlin says what an author has typed.
class TestPronunciationTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace();
        State().MenuShown = true;
        m_desk->WriteSpelling("Pets", { "cat", "dog" });
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void placesBesideTheBoxes_data()
    {
        QTest::addColumn<int>("right"); // edge of txtNew, in twips
        QTest::addColumn<int>("frameLeft");
        QTest::addColumn<int>("displayWidth");
        QTest::addColumn<QPoint>("place");
        QTest::newRow("800 wide") << 7000 << 200 << 800 << QPoint(400, 0);
        QTest::newRow("wider") << 7000 << 200 << 0 << QPoint(437, 62); // 436.67 and 61.67
        QTest::newRow("any other width") << 7000 << 200 << 1024 << QPoint(437, 62);
        QTest::newRow("half a unit goes to the even one") << 1058 << 0 << 800 << QPoint(17, 0);
        QTest::newRow("left of the screen") << 100 << 0 << 800 << QPoint(-47, 0);
    }
    void placesBesideTheBoxes()
    {
        QFETCH(int, right);
        QFETCH(int, frameLeft);
        QFETCH(int, displayWidth);
        const TesterPlace place = PlaceBesideBoxes(TwipsRect{ right - 3000, 0, 3000, 500 },
                                                   TwipsRect{ frameLeft, 925, 100, 100 }, displayWidth);
        QTEST(QPoint(place.x, place.y), "place");
    }

    void placesBeforeTheList()
    {
        const TwipsRect list{ 300, 1470, 4440, 6450 };
        const TesterPlace raised = PlaceBeforeList(list, 256, Standing::Raised);
        QCOMPARE(QPoint(raised.x, raised.y), QPoint(53, 338)); // 53.33 and 337.6
        const TesterPlace lowered = PlaceBeforeList(list, 256, Standing::Lowered);
        QCOMPARE(QPoint(lowered.x, lowered.y), QPoint(53, 511)); // 510.93
        int raisedNumber = 0;
        try {
            PlaceBeforeList(TwipsRect{ 15 * 32767, 0, 0, 0 }, 256, Standing::Raised);
        } catch (const platform::Error &error) {
            raisedNumber = error.Number();
        }
        QCOMPARE(raisedNumber, 6);
    }

    void anEmptyBoxIsToldOfAndNobodyComes_data() { Buttons(); }
    void anEmptyBoxIsToldOfAndNobodyComes()
    {
        QFETCH(QString, button);
        QFETCH(QString, message);
        Open(button);
        m_desk->boxes.Expect(message);
        m_desk->Press(button);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
        QVERIFY(m_desk->transcript.Said().isEmpty());
        QVERIFY(State().AgentControl.IsNothing());
    }

    // The control is not set yet: this road is the same for all six.
    void theFirstTestCallsMerlinWhoTellsHowToMoveHim_data() { Buttons(); }
    void theFirstTestCallsMerlinWhoTellsHowToMoveHim()
    {
        QFETCH(QString, button);
        QFETCH(QString, box);
        QFETCH(QString, spoken);
        QFETCH(QString, tagEnd);
        Open(button);
        m_desk->Type(box, "bow");
        m_desk->transcript.Clear();
        m_desk->Press(button);
        QCOMPARE(m_desk->transcript.Asked(),
                 QStringList({ "Merlin Load \"Merlin.acs\"", "Genie Load \"Genie.acs\"",
                               "Peedy Load \"Peedy.acs\"", "Merlin Show", "Merlin MoveTo " + Expected(),
                               Speak(kLongTip.mid(8)), Speak(TestSpeechText(spoken, tagEnd)) }));
        QCOMPARE(Merlin(), Expected());
        // The second test finds him there.
        m_desk->transcript.Clear();
        m_desk->Press(button);
        QCOMPARE(m_desk->transcript.Asked(), QStringList({ Speak(TestSpeechText(spoken, tagEnd)) }));
        QCOMPARE(Boxes().filter("bow"), QStringList({ box + "=bow" }));
    }

    // The control is there but its screen has gone: how he comes differs from button to button.
    void aLostConnectionIsMadeAnew_data() { Buttons(); }
    void aLostConnectionIsMadeAnew()
    {
        QFETCH(QString, button);
        QFETCH(QString, box);
        QFETCH(QString, spoken);
        QFETCH(QString, tagEnd);
        QFETCH(QString, arrival);
        Open(button);
        m_desk->Type(box, "bow");
        State().AgentControl = m_desk->agent.CreateControl();
        State().AgentControl->Disconnect();
        m_desk->transcript.Clear();
        m_desk->Press(button);
        QStringList asked{ "Merlin Load \"Merlin.acs\"", "Genie Load \"Genie.acs\"",
                           "Peedy Load \"Peedy.acs\"", "Merlin Show" };
        if (arrival != "shown")
            asked << "Merlin MoveTo " + Expected(arrival == "low, short tip");
        if (arrival == "placed, long tip")
            asked << Speak(kLongTip.mid(8));
        if (arrival == "low, short tip")
            asked << Speak(kShortTip.mid(8));
        asked << Speak(TestSpeechText(spoken, tagEnd));
        QCOMPARE(m_desk->transcript.Asked(), asked);
    }

    void placesFollowTheDisplay_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("800") << QSize(800, 600);
        QTest::newRow("1024") << QSize(1024, 768);
        QTest::newRow("1536") << QSize(1536, 864);
    }
    // Out of the way of the boxes: what is seen of him begins 40 units within his frame.
    void placesFollowTheDisplay()
    {
        QFETCH(QSize, size);
        State().DisplayWidth = size.width() == 800 ? 800 : 0;
        for (const char *button : { "cmdTestit", "cmdETest" }) {
            Open(button);
            frmSpelling1::Exists() ? frmSpelling1::Shared().Window()->resize(size)
                                   : frmEditSpell::Shared().Window()->resize(size);
            m_desk->Settle();
            m_desk->Type(QString(button) == "cmdTestit" ? "txtNew" : "txtESpell", "bow");
            m_desk->Press(button);
            QCOMPARE(Merlin(), Expected());
            const auto &merlin = State().Characters[kMerlin];
            const QRect body(merlin->Left() + 40, merlin->Top() + 28, 164, 228);
            const QRect display(QPoint(), size);
            QVERIFY(display.contains(body));
            const QWidget *window =
                m_desk->Find<QLineEdit>(QString(button) == "cmdTestit" ? "txtNew" : "txtESpell")->window();
            for (const auto *box : window->findChildren<QLineEdit *>())
                QVERIFY2(!body.intersects(QRect(box->mapTo(window, QPoint()), box->size())),
                         qPrintable(box->objectName()));
            m_desk->Type(QString(button) == "cmdTestit" ? "txtNew" : "txtESpell", "");
            m_desk->Press(QString(button) == "cmdTestit" ? "Command4" : "cmdMenu");
            QVERIFY(frmMenu1::Shared().IsActive());
            frmMenu1::Shared().Unload();
            frmList::Shared().Load(); // the program would end without a screen
        }
    }

    void theTestOfThePronunciationSaysTheWord()
    {
        Open("cmdTest");
        m_desk->Type("txtPronounce", "nite");
        m_desk->Press("cmdTest");
        QCOMPARE(m_desk->transcript.Said().last(), QString("Merlin: \\Map=\"\"=\"\"\\"));
        m_desk->Type("txtNew", "knight");
        m_desk->Press("cmdTest");
        QCOMPARE(m_desk->transcript.Said().last(), QString("Merlin: \\Map=\"knight\"=\"knight\"\\"));
    }

    void aFailedSpeechTellsOfTheSoundCardAndGoesToTheMenu_data() { Buttons(); }
    void aFailedSpeechTellsOfTheSoundCardAndGoesToTheMenu()
    {
        QFETCH(QString, button);
        QFETCH(QString, box);
        Open(button);
        m_desk->Type(box, "bow");
        if (button == "cmdTest")
            m_desk->Type("txtNew", "bow"); // nothing to say cannot fail
        m_desk->stage.SetSpeechFailure(5);
        m_desk->boxes.Expect(kSoundCard);
        m_desk->Press(button);
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmSpelling1::Exists() && !frmEditSpell::Exists());
    }

    void anyOtherErrorIsReported()
    {
        Open("cmdTestit");
        m_desk->Type("txtNew", "bow");
        m_desk->stage.SetFileFailure("Merlin.acs", platform::kAgentFileMissing);
        m_desk->boxes.ExpectAny();
        m_desk->Press("cmdTestit");
        QVERIFY(m_desk->boxes.LastText().startsWith("Tumblewick has detected a problem. Please email "));
        QVERIFY(m_desk->boxes.LastText().contains(QString::number(platform::kAgentFileMissing)));
        QVERIFY(frmSpelling1::Shared().IsActive());
    }

    void aSecondClickMeanwhileStartsAFurtherTest()
    {
        Open("cmdTestit");
        m_desk->Type("txtNew", "bow");
        m_desk->After(std::chrono::seconds(5), [this] {
            m_desk->Type("txtNew", "wow");
            m_desk->Press("cmdTestit");
        });
        m_desk->Press("cmdTestit");
        const QStringList said = m_desk->transcript.Said();
        QCOMPARE(said.mid(said.size() - 2),
                 QStringList({ "Merlin: \\Map=\"bow\"=\"bow\"\\.", "Merlin: \\Map=\"wow\"=\"wow\"\\." }));
    }

    void theScreenLivesWhileMerlinSpeaks()
    {
        Open("cmdTestit");
        m_desk->Type("txtNew", "bow");
        m_desk->After(std::chrono::seconds(5), [this] {
            m_desk->Press("Command1");
            m_desk->Type("txtName", "Bows");
            m_desk->boxes.Expect("Your list has been saved.");
            m_desk->Press("Command3");
        });
        m_desk->Press("cmdTestit");
        QVERIFY(m_desk->disk.FileExists(m_desk->folder.filePath("Lists/Bows")));
    }

    // Who leaves meanwhile is told nothing, and nothing is left waiting behind the next screen.
    void leavingCutsMerlinOff_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("way");
        QTest::newRow("create, back") << "cmdTestit"
                                      << "txtNew"
                                      << "cmdback";
        QTest::newRow("create, menu") << "cmdTestit"
                                      << "txtNew"
                                      << "Command4";
        QTest::newRow("edit, menu") << "cmdETest"
                                    << "txtESpell"
                                    << "cmdMenu";
    }
    void leavingCutsMerlinOff()
    {
        QFETCH(QString, button);
        QFETCH(QString, box);
        QFETCH(QString, way);
        Open(button);
        m_desk->Type(box, "bow");
        bool isLeft = false;
        m_desk->After(std::chrono::seconds(5), [&] {
            QVERIFY(m_desk->stage.Talking() > 0);
            m_desk->Type(box, "");
            m_desk->Press(way);
            isLeft = true;
        });
        m_desk->Press(button); // comes back, since it does not wait any more
        QVERIFY(isLeft);
        QVERIFY(!m_desk->time.Hung());
        QVERIFY(way == "cmdback" ? frmList::Shared().IsActive() : frmMenu1::Shared().IsActive());
        QVERIFY(!frmSpelling1::Exists() && !frmEditSpell::Exists());
        QCOMPARE(m_desk->stage.Talking(), 0);
        QCOMPARE(m_desk->stage.Seen(), 0);
    }

    void merlinStaysUntilTheScreenGoesAndComesAnewOnTheNextVisit()
    {
        for (int visit = 0; visit < 3; ++visit) {
            m_desk->transcript.Clear();
            frmList::Shared().Show();
            m_desk->Settle();
            m_desk->Press("cmdNewSpell");
            m_desk->Type("txtNew", "bow");
            m_desk->Press("cmdTestit");
            QCOMPARE(m_desk->stage.Seen(), 1);
            QCOMPARE(m_desk->transcript.Said().size(), 2); // the tip and the word
            QCOMPARE(int(State().Characters[kMerlin]->Height()), 256);
            m_desk->Press("cmdback");
            QCOMPARE(m_desk->stage.Seen(), 0);
        }
    }

private:
    static void Buttons()
    {
        const QString noSpelling = "You have not entered the spelling for the word. ";
        const QString noSound = "You have not entered the pronunciation for the word. ";
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("box"); // which is looked at
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("spoken"); // when "bow" stands in that box
        QTest::addColumn<QString>("tagEnd");
        QTest::addColumn<QString>("arrival");
        QTest::newRow("cmdTestit") << "cmdTestit"
                                   << "txtNew" << noSpelling << "bow"
                                   << "\\."
                                   << "placed";
        QTest::newRow("cmdTest") << "cmdTest"
                                 << "txtPronounce"
                                 << "You have not entered a pronunciation to test."
                                 << ""
                                 << "\\"
                                 << "placed";
        QTest::newRow("cmdATest") << "cmdATest"
                                  << "txtASpell" << noSpelling << "bow"
                                  << "\\."
                                  << "shown";
        QTest::newRow("cmdATest2") << "cmdATest2"
                                   << "txtAPronounce" << noSound << "bow"
                                   << "\\."
                                   << "shown";
        QTest::newRow("cmdETest") << "cmdETest"
                                  << "txtESpell" << noSpelling << "bow"
                                  << "\\."
                                  << "placed, long tip";
        QTest::newRow("cmdETest2") << "cmdETest2"
                                   << "txtEPronounce" << noSound << "bow"
                                   << "\\."
                                   << "low, short tip";
    }

    // Shows the screen on which the button stands.
    void Open(const QString &button)
    {
        if (button == "cmdTestit" || button == "cmdTest") {
            frmSpelling1::Shared().Show();
        } else {
            frmEditSpell::Shared().EditFileName = "Pets";
            frmEditSpell::Shared().Show();
        }
        m_desk->Settle();
    }
    // Where Merlin is to stand, by the rectangles that the controls have now.
    QString Expected(bool isLow = false)
    {
        if (frmSpelling1::Exists()) {
            const auto *box = m_desk->Find<QLineEdit>("txtNew");
            const auto *frame = m_desk->Find<QFrame>("Frame1");
            const double x = box->x() + box->width() - frame->x();
            return State().DisplayWidth == 800 ? QString("%1,0").arg(qRound(x - 800 / 15.0))
                                               : QString("%1,%2").arg(qRound(x - 250 / 15.0)).arg(frame->y());
        }
        const auto *list = m_desk->Find<QTreeView>("List");
        const double y = list->y() + list->height() - (256 + (isLow ? 0 : 2600)) / 15.0;
        return QString("%1,%2").arg(qRound(list->x() + 500 / 15.0)).arg(qRound(y));
    }
    static QString Merlin()
    {
        const auto &merlin = State().Characters[kMerlin];
        return QString("%1,%2").arg(int(merlin->Left())).arg(int(merlin->Top()));
    }
    static QString Speak(const QString &text) { return "Merlin Speak \"" + text + '"'; }
    QStringList Boxes()
    {
        QStringList texts;
        const QWidget *window =
            frmSpelling1::Exists() ? frmSpelling1::Shared().Window() : frmEditSpell::Shared().Window();
        for (const auto *box : window->findChildren<QLineEdit *>())
            texts << box->objectName() + '=' + box->text();
        return texts;
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestPronunciationTest)
#include "TestPronunciationTest.moc"

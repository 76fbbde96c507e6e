#include "platform/agent/OptionsSheet.h"
#include "support/ControlWalk.h"
#include "support/FakeMicrophone.h"
#include "support/FakeOptionsStore.h"
#include "support/FakeRecogniser.h"
#include "support/FakeTime.h"
#include "support/FakeVoice.h"
#include "support/SmallCharacter.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QToolTip>
#include <set>

using namespace platform;

namespace {

// Three ways to read the lists; what is set is written down.
class FakeVoices : public VoiceOptions {
public:
    VoiceChoices Available() const override
    {
        return { { "en", "English (recorded voices)", "en" },
                 { "fr", "French", "fr" },
                 { "de", "German", "de" } };
    }
    bool SetReadingVoice(const QString &id) override
    {
        reading = id;
        return true;
    }
    QString ReadingVoice() const override { return reading; }
    void SetRate(const QString &, double factor) override { rate = factor; }
    void SetPitch(const QString &character, double factor) override { pitches[character] = factor; }
    double Rate(const QString &) const override { return rate; }
    double Pitch(const QString &character) const override { return pitches.at(character); }

    QString reading;
    double rate = 1;
    std::map<QString, double> pitches;
};

// Notes what holds when a line is ordered.
class NotingEngine : public support::FakeSpeechEngine {
public:
    NotingEngine(Events &events, FakeVoices &voices) : FakeSpeechEngine(events), m_voices(voices) {}
    [[nodiscard]] std::unique_ptr<Order> Synthesise(const SpeechText &text, const VoiceSettings &settings,
                                                    Ready ready) override
    {
        rate = m_voices.rate;
        pitch = m_voices.pitches["Merlin"];
        return FakeSpeechEngine::Synthesise(text, settings, std::move(ready));
    }
    double rate = 0;
    double pitch = 0;

private:
    FakeVoices &m_voices;
};

} // namespace

// The property sheet: what it shows, what it changes and when, and that it can be used without a mouse.
class TestOptionsSheet : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_time = std::make_unique<support::FakeTime>();
        m_voices = FakeVoices();
        m_engine = std::make_unique<NotingEngine>(*m_time, m_voices);
        m_audio = std::make_unique<support::FakeAudioOut>(*m_time, *m_time);
        m_microphone = std::make_unique<support::FakeMicrophone>();
        m_store = support::FakeOptionsStore();
        MakeSheet();
    }
    void cleanup()
    {
        m_sheet.reset();
        m_options.reset();
        m_audio.reset();
        m_engine.reset();
        m_time.reset();
    }

    void itHasNoPlaceBeforeItIsFirstShown()
    {
        QVERIFY(!m_sheet->Visible());
        QCOMPARE(int(m_sheet->Left()), 0);
        QCOMPARE(int(m_sheet->Top()), 0);
        QCOMPARE(int(m_sheet->Width()), 0);
        QCOMPARE(int(m_sheet->Height()), 0);
        QCOMPARE(m_sheet->Page(), QStringLiteral("Output"));
        m_sheet->SetVisible(false);
        QVERIFY(!m_sheet->Visible());
    }

    void itOpensInTheMiddleAndIsNotModal()
    {
        Open();
        QVERIFY(m_sheet->Visible());
        QVERIFY(!Window().isModal());
        QVERIFY(Window().isWindow());
        QVERIFY(!Window().testAttribute(Qt::WA_QuitOnClose));
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(Window().geometry()));
        QVERIFY((screen.center() - Window().geometry().center()).manhattanLength() < 40);
        QCOMPARE(int(m_sheet->Width()), Window().width());
        QVERIFY(Window().width() <= 800 && Window().height() <= 570);
    }

    void pagesAreKnownByNameInAnyLetterCase()
    {
        m_sheet->SetPage("sPeech");
        QCOMPARE(m_sheet->Page(), QStringLiteral("Speech"));
        Open();
        QCOMPARE(m_sheet->Page(), QStringLiteral("Speech"));
        m_sheet->SetPage("Copyright");
        QCOMPARE(Control<QTabWidget>("")->currentIndex(), 2);
        bool raised = false;
        try {
            m_sheet->SetPage("Weather");
        } catch (const Error &error) {
            raised = error.Number() == kInvalidCall;
        }
        QVERIFY(raised);
        QCOMPARE(m_sheet->Page(), QStringLiteral("Copyright"));
    }

    void pageAndPlaceAreRememberedInTheNextRun()
    {
        Open();
        m_sheet->SetPage("Copyright");
        Window().move(33, 21);
        Press("cmdCancel");
        QCOMPARE(m_store.place, (SheetPlace{ "Copyright", QPoint(33, 21) }));
        m_sheet.reset();
        MakeSheet();
        QCOMPARE(m_sheet->Page(), QStringLiteral("Copyright"));
        Open();
        QCOMPARE(Window().pos(), QPoint(33, 21));
        QCOMPARE(m_sheet->Page(), QStringLiteral("Copyright"));
    }

    // Not even for a moment, while it is made.
    void nothingIsShownBesideTheSheet()
    {
        class Watch : public QObject {
        public:
            QStringList shown;

        protected:
            bool eventFilter(QObject *watched, QEvent *event) override
            {
                const auto *widget = qobject_cast<QWidget *>(watched);
                if (widget && widget->isWindow() && event->type() == QEvent::Show)
                    shown << widget->objectName();
                return false;
            }
        };
        m_recogniser.obstacle = "There is no recogniser here.";
        MakeSheet();
        Watch watch;
        qApp->installEventFilter(&watch);
        Open();
        m_recogniser.obstacle.clear();
        QCOMPARE(watch.shown, QStringList{ "PropertySheet" });
    }

    void spellingWithoutARecogniserCannotBeSwitchedOn()
    {
        m_sheet->SetPage("Speech");
        Open();
        auto *spelling = Window().findChild<QCheckBox *>("chkSpelling");
        QVERIFY(spelling->isEnabled() && !spelling->isChecked());
        QVERIFY(!Window().findChild<QLabel *>("lblRecogniser")->isVisible());

        m_recogniser.obstacle = "There is no recogniser here.";
        MakeSheet();
        m_sheet->SetPage("Speech");
        Open();
        spelling = Window().findChild<QCheckBox *>("chkSpelling");
        QVERIFY(!spelling->isEnabled());
        auto *told = Window().findChild<QLabel *>("lblRecogniser");
        QVERIFY(told->isVisible());
        QCOMPARE(told->text(), m_recogniser.obstacle);

        // What was on before can be switched off.
        m_store.options.voiceSpelling = true;
        MakeSheet();
        m_sheet->SetPage("Speech");
        Open();
        spelling = Window().findChild<QCheckBox *>("chkSpelling");
        QVERIFY(spelling->isEnabled() && spelling->isChecked());
        m_recogniser.obstacle.clear();
    }

    void aPlaceOnAScreenThatHasGoneIsGivenUp()
    {
        m_store.place = { "Output", QPoint(5000, 4000) };
        MakeSheet();
        Open();
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY2(screen.contains(Window().geometry()), qPrintable(QDebug::toString(Window().geometry())));
    }

    void aSheetThatHungOutOfTheScreenComesBackBesideItsPlace()
    {
        m_store.place = { "Output", QPoint(-20, 15) };
        MakeSheet();
        Open();
        QCOMPARE(Window().pos(), QPoint(0, 15));
    }

    void thePagesShowWhatHolds()
    {
        ServiceOptions options;
        options.balloons = false;
        options.balloonTextSize = 28;
        options.voice = false;
        options.speakingRate = 4;
        options.soundEffects = false;
        options.SetVoiceOf("Merlin", { "cmu_us_slt", -3 });
        options.readingVoice = "de";
        options.voiceSpelling = true;
        options.microphone = "headset";
        m_options->Set(options);
        Open();
        QVERIFY(!Box("chkBalloons")->isChecked());
        QVERIFY(!Bar("sldTextSize")->isEnabled());
        QCOMPARE(Bar("sldTextSize")->value(), 28);
        QVERIFY(!Box("chkVoice")->isChecked());
        QCOMPARE(Bar("sldRate")->value(), 4);
        QVERIFY(!Box("chkEffects")->isChecked());
        QCOMPARE(Choice("cmbVoiceMerlin")->currentText(), QStringLiteral("American woman"));
        QCOMPARE(Bar("sldPitchMerlin")->value(), -3);
        QCOMPARE(Choice("cmbReader")->currentText(), QStringLiteral("German"));
        QVERIFY(Box("chkSpelling")->isChecked());
        QCOMPARE(Choice("cmbMicrophone")->currentText(), QStringLiteral("Headset"));
        QVERIFY(!Button("cmdApply")->isEnabled());
        // Opening and closing it changes nothing.
        const int writes = m_store.writes;
        Press("cmdOK");
        QCOMPARE(m_options->Now(), options);
        QCOMPARE(m_store.writes, writes);
    }

    void voiceSpellingIsOffAtFirst()
    {
        Open();
        QVERIFY(!Box("chkSpelling")->isChecked());
    }

    void nothingHoldsBeforeApply()
    {
        Open();
        Box("chkVoice")->click();
        Bar("sldTextSize")->setValue(24);
        QCOMPARE(m_options->Now(), ServiceOptions{});
        QVERIFY(Button("cmdApply")->isEnabled());
        Press("cmdApply");
        QVERIFY(m_sheet->Visible());
        QVERIFY(!m_options->Now().voice);
        QCOMPARE(m_options->Now().balloonTextSize, 24);
        QCOMPARE(m_store.options, m_options->Now());
        QVERIFY(!Button("cmdApply")->isEnabled());
        Box("chkVoice")->click();
        QVERIFY(Button("cmdApply")->isEnabled());
        Box("chkVoice")->click();
        QVERIFY(!Button("cmdApply")->isEnabled());
    }

    void okTakesEverythingOver()
    {
        Open();
        Box("chkBalloons")->click();
        Box("chkEffects")->click();
        Bar("sldRate")->setValue(-2);
        Choice("cmbVoiceMerlin")->setCurrentIndex(1);
        Bar("sldPitchMerlin")->setValue(5);
        Choice("cmbReader")->setCurrentIndex(1);
        m_sheet->SetPage("Speech");
        Box("chkSpelling")->click();
        Choice("cmbMicrophone")->setCurrentIndex(2);
        Press("cmdOK");
        QVERIFY(!m_sheet->Visible());
        const ServiceOptions &now = m_options->Now();
        QVERIFY(!now.balloons && !now.soundEffects && now.voice && now.voiceSpelling);
        QCOMPARE(now.speakingRate, -2);
        QCOMPARE(now.VoiceOf("Merlin"), (CharacterVoice{ "cmu_us_rms", 5 }));
        QCOMPARE(now.readingVoice, QStringLiteral("fr"));
        QCOMPARE(now.microphone, QStringLiteral("headset"));
    }

    void cancelEscapeAndCloseLeaveEverything_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("Cancel") << 0;
        QTest::newRow("Escape") << 1;
        QTest::newRow("its frame") << 2;
        QTest::newRow("the program") << 3;
    }
    void cancelEscapeAndCloseLeaveEverything()
    {
        QFETCH(int, way);
        Open();
        Box("chkVoice")->click();
        if (way == 0)
            Press("cmdCancel");
        else if (way == 1)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        else if (way == 2)
            Window().close();
        else
            m_sheet->SetVisible(false);
        QVERIFY(!m_sheet->Visible());
        QCOMPARE(m_options->Now(), ServiceOptions{});
        QCOMPARE(m_store.writes, 0);
        Open();
        QVERIFY(Box("chkVoice")->isChecked());
    }

    void tryingSpeaksAtOnceWithWhatStandsOnThePage()
    {
        Open();
        Bar("sldRate")->setValue(5);
        Bar("sldPitchMerlin")->setValue(-5);
        Choice("cmbVoiceMerlin")->setCurrentIndex(2);
        Press("cmdTryMerlin");
        m_time->Run(std::chrono::milliseconds(50));
        QVERIFY(m_audio->Playing());
        QVERIFY(m_engine->Ordered().last().contains("Merlin"));
        QCOMPARE(m_engine->LastSettings().voice, QStringLiteral("cmu_us_slt"));
        QVERIFY(m_engine->rate > 1.4);
        QVERIFY(m_engine->pitch < 0.8);
        // What is said elsewhere still sounds as before.
        QCOMPARE(m_voices.rate, 1.0);
        QCOMPARE(m_voices.pitches["Merlin"], 1.0);
        QCOMPARE(m_options->Now(), ServiceOptions{});
        // Again: from the start. Closing: silence.
        Press("cmdTryMerlin");
        m_time->Run(std::chrono::milliseconds(50));
        QCOMPARE(m_audio->Played().size(), std::size_t(2));
        Press("cmdCancel");
        QVERIFY(!m_audio->Playing());
        QVERIFY(Control<QLabel>("lblTrouble")->text().isEmpty());
    }

    void aVoiceWhosePitchCannotBeSetHasItsSliderOffAndSaysWhy()
    {
        Open();
        QSlider &pitch = *Bar("sldPitchMerlin");
        QVERIFY(pitch.isEnabled());
        Choice("cmbVoiceMerlin")->setCurrentIndex(Choice("cmbVoiceMerlin")->findData("cmu_us_rms"));
        QVERIFY(!pitch.isEnabled());
        Press("cmdApply");
        QVERIFY(!pitch.isEnabled());
        QVERIFY(pitch.accessibleDescription().contains("a melody of its own"));
        QToolTip::hideText();
        const QPoint middle = pitch.rect().center();
        QHelpEvent rest(QEvent::ToolTip, middle, pitch.mapToGlobal(middle));
        QApplication::sendEvent(&pitch, &rest);
        QCOMPARE(QToolTip::text(), pitch.accessibleDescription());
        QToolTip::hideText();
        Choice("cmbVoiceMerlin")->setCurrentIndex(0);
        QVERIFY(pitch.isEnabled());
        QCOMPARE(pitch.accessibleDescription(), QString());
    }

    void tryingWithoutSoundSaysSo()
    {
        m_audio->SetUsable(false);
        Open();
        Press("cmdTryMerlin");
        QVERIFY(!Control<QLabel>("lblTrouble")->text().isEmpty());
        QVERIFY(!Control<QLabel>("lblTrouble")->text().isEmpty());
        m_audio->SetUsable(true);
        m_engine->SetUsable(false);
        Press("cmdTryMerlin");
        m_time->Run(std::chrono::milliseconds(50));
        QVERIFY(!Control<QLabel>("lblTrouble")->text().isEmpty());
        m_engine->SetUsable(true);
        Press("cmdTryMerlin");
        m_time->Run(std::chrono::milliseconds(50));
        QVERIFY(Control<QLabel>("lblTrouble")->text().isEmpty());
    }

    void theMeterListensWhileItsPageIsOpenAndNoLonger()
    {
        Open();
        QVERIFY(!m_microphone->Listening());
        m_sheet->SetPage("Speech");
        QVERIFY(m_microphone->Listening());
        QCOMPARE(m_microphone->ListeningTo(), QString());
        auto *meter = Control<QProgressBar>("barLevel");
        m_microphone->Hear(0.7);
        QCOMPARE(meter->value(), 70);
        m_microphone->Hear(0);
        QCOMPARE(meter->value(), 0);
        Choice("cmbMicrophone")->setCurrentIndex(1);
        QCOMPARE(m_microphone->ListeningTo(), QStringLiteral("built-in"));
        m_sheet->SetPage("Output");
        QVERIFY(!m_microphone->Listening());
        m_sheet->SetPage("Speech");
        QVERIFY(m_microphone->Listening());
        Press("cmdCancel");
        QVERIFY(!m_microphone->Listening());
    }

    void withoutMicrophoneItSaysSoUntilOneIsPluggedIn()
    {
        const auto devices = std::exchange(m_microphone->devices, {});
        m_sheet->SetPage("Speech");
        Open();
        auto *state = Control<QLabel>("lblMicrophone");
        QVERIFY(state->text().startsWith("There is no microphone"));
        QVERIFY(!Control<QProgressBar>("barLevel")->isEnabled());
        m_microphone->devices = devices;
        m_microphone->devicesChanged();
        QVERIFY(m_microphone->Listening());
        QVERIFY(state->text().startsWith("Say something"));
        m_microphone->usable = false;
        m_microphone->devicesChanged();
        QVERIFY(state->text().startsWith("This microphone cannot be used"));
    }

    void aMicrophoneThatIsUnpluggedStaysChosen()
    {
        ServiceOptions options;
        options.microphone = "headset";
        m_options->Set(options);
        m_microphone->devices.pop_back();
        m_sheet->SetPage("Speech");
        Open();
        Box("chkSpelling")->click();
        Press("cmdOK");
        QCOMPARE(m_options->Now().microphone, QStringLiteral("headset"));
    }

    void theCopyrightPageTellsVersionLicenceAndVoices()
    {
        m_sheet->SetPage("Copyright");
        Open();
        const QString text = Control<QTextBrowser>("txtCopyright")->toPlainText();
        for (const char *part :
             { "Version 1.", "Copyright", "General Public License", "Carnegie Mellon", "Flite", "eSpeak" })
            QVERIFY2(text.contains(part), part);
    }

    void everyControlHasANameForThoseWhoCannotSeeIt()
    {
        Open();
        for (const QWidget *control : Window().findChildren<QWidget *>()) {
            if (!(control->focusPolicy() & Qt::TabFocus) || control->inherits("QTabBar") ||
                control->inherits("QScrollBar") || control->window() != &Window())
                continue;
            const auto *button = qobject_cast<const QAbstractButton *>(control);
            const bool named = !control->accessibleName().isEmpty() || (button && !button->text().isEmpty());
            QVERIFY2(named, control->metaObject()->className());
        }
    }

    void everyControlIsReachedByTabAndToldOf()
    {
        for (const char *page : { "Output", "Speech", "Copyright" }) {
            m_sheet->SetPage(page);
            Open();
            QCOMPARE(support::FaultsForKeyboardAndReader(Window()).join('\n'), QString());
            QVERIFY(support::TabRound(Window()).size() >= 4);
        }
    }

    void noTwoControlsOfAPageShareAMnemonic()
    {
        Open();
        const auto *pages = Control<QTabWidget>("");
        for (int page = 0; page < pages->count(); ++page) {
            QString letters;
            const auto add = [&letters](const QString &text) {
                const QKeySequence key = QKeySequence::mnemonic(text);
                if (!key.isEmpty())
                    letters += key.toString().right(1);
            };
            for (int tab = 0; tab < pages->count(); ++tab)
                add(pages->tabText(tab));
            for (const char *name : { "cmdOK", "cmdCancel", "cmdApply" })
                add(Button(name)->text());
            for (const QLabel *label : pages->widget(page)->findChildren<QLabel *>())
                add(label->text());
            for (const QAbstractButton *button : pages->widget(page)->findChildren<QAbstractButton *>())
                add(button->text());
            QCOMPARE(letters.size(), qsizetype(std::set<QChar>(letters.begin(), letters.end()).size()));
            QVERIFY(letters.size() >= 5);
        }
    }

    void noTextIsCutOffOrTooSmall()
    {
        for (const char *page : { "Output", "Speech", "Copyright" }) {
            m_sheet->SetPage(page);
            Open();
            for (const QLabel *label : Window().findChildren<QLabel *>()) {
                if (!label->isVisible() || label->objectName() == "lblSample")
                    continue;
                QVERIFY2(label->fontInfo().pixelSize() >= 16, qPrintable(label->text()));
                QVERIFY2(label->width() >= label->minimumSizeHint().width(), qPrintable(label->text()));
                QVERIFY2(!label->wordWrap() || label->height() >= label->heightForWidth(label->width()),
                         qPrintable(label->text()));
                QVERIFY(
                    Window().rect().contains(QRect(label->mapTo(&Window(), QPoint(0, 0)), label->size())));
            }
        }
    }

private:
    void MakeSheet()
    {
        m_sheet.reset();
        m_options = std::make_unique<OptionsKeeper>(m_store);
        m_sheet = std::make_unique<OptionsSheet>(SheetSources{
            *m_options, *m_engine, m_voices, *m_audio, *m_microphone,
            [] { return std::vector<std::shared_ptr<const CharacterData>>{ support::SmallCharacter() }; },
            &m_recogniser });
    }
    void Open()
    {
        m_sheet->SetVisible(true);
        QVERIFY(QTest::qWaitForWindowActive(&Window()));
    }
    SheetWindow &Window() { return *m_sheet->Window(); }
    template <class T>
    T *Control(const char *name)
    {
        T *control = Window().findChild<T *>(QString::fromLatin1(name));
        if (!control)
            qFatal("There is no %s.", name);
        return control;
    }
    QCheckBox *Box(const char *name) { return Control<QCheckBox>(name); }
    QSlider *Bar(const char *name) { return Control<QSlider>(name); }
    QComboBox *Choice(const char *name) { return Control<QComboBox>(name); }
    QPushButton *Button(const char *name) { return Control<QPushButton>(name); }
    void Press(const char *name) { Button(name)->click(); }

    std::unique_ptr<support::FakeTime> m_time;
    FakeVoices m_voices;
    std::unique_ptr<NotingEngine> m_engine;
    std::unique_ptr<support::FakeAudioOut> m_audio;
    std::unique_ptr<support::FakeMicrophone> m_microphone;
    support::FakeTime m_recognising;
    support::FakeRecogniser m_recogniser{ m_recognising };
    support::FakeOptionsStore m_store;
    std::unique_ptr<OptionsKeeper> m_options;
    std::unique_ptr<OptionsSheet> m_sheet;
};

QTEST_MAIN(TestOptionsSheet)
#include "TestOptionsSheet.moc"

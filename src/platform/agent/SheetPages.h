#pragma once

#include "platform/agent/SheetWindow.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QSlider;

namespace platform {

// The pages of the property sheet. A page shows options, changes them in what Take fills in, and calls
// `changed` after every change by the user.

// How the characters look and sound.
class OutputPage : public QWidget {
    Q_OBJECT

public:
    explicit OutputPage(const SheetSources &sources);

    void Show(const ServiceOptions &options);
    void Take(ServiceOptions &options) const;
    // Silences a voice that is tried.
    void StopTrying();

    std::function<void()> changed;
    // What went wrong with a trial, for the user; empty when one begins.
    std::function<void(const QString &)> tell;

private:
    QStringList Names() const;
    struct Row {
        std::shared_ptr<const CharacterData> character;
        QComboBox *voice;
        QSlider *pitch;
    };
    static void AllowPitch(const Row &row);
    QWidget *Balloons();
    QWidget *Voices();
    QWidget *Characters();
    void FillReaders(const QString &chosen);
    void ShowSample();
    void Try(const Row &row);

    OptionsKeeper &m_options;
    SpeechEngine &m_engine;
    VoiceOptions &m_voices;
    AudioOut &m_audio;
    QCheckBox *m_balloons = nullptr;
    QSlider *m_textSize = nullptr;
    QLabel *m_sample = nullptr;
    QCheckBox *m_voice = nullptr;
    QCheckBox *m_effects = nullptr;
    QSlider *m_rate = nullptr;
    std::vector<Row> m_rows;
    QComboBox *m_reader = nullptr;
    std::unique_ptr<SpeechEngine::Order> m_order;
};

// How the children may speak to the game.
class SpeechPage : public QWidget {
    Q_OBJECT

public:
    SpeechPage(Microphone &microphone, const LetterRecogniser *recogniser);
    ~SpeechPage() override;

    void Show(const ServiceOptions &options);
    void Take(ServiceOptions &options) const;

    std::function<void()> changed;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *Spelling(const LetterRecogniser *recogniser);
    QWidget *Listening();
    void FillDevices(const QString &chosen);
    void Listen();
    QString ChosenDevice() const;

    Microphone &m_microphone;
    QCheckBox *m_spelling = nullptr;
    bool m_canSpell = true;
    QComboBox *m_device = nullptr;
    QProgressBar *m_level = nullptr;
    QLabel *m_state = nullptr;
};

// Whose all of this is.
class CopyrightPage : public QWidget {
    Q_OBJECT

public:
    CopyrightPage();
};

} // namespace platform

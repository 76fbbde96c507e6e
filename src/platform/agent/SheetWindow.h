#pragma once

#include "platform/agent/CharacterData.h"
#include "platform/agent/ServiceOptions.h"
#include "platform/voice/LetterRecogniser.h"
#include "platform/voice/Microphone.h"

#include <QDialog>

#include <memory>
#include <vector>

class QLabel;
class QPushButton;
class QTabWidget;

namespace platform {

class OutputPage;
class SpeechPage;

// What the property sheet shows and works with. All of it has to outlive the sheet.
struct SheetSources {
    OptionsKeeper &options;
    SpeechEngine &engine;
    VoiceOptions &voices; // of that engine
    AudioOut &audio;      // for trying voices; not the one that the characters speak through
    Microphone &microphone;
    std::function<std::vector<std::shared_ptr<const CharacterData>>()> characters;
    // What would understand the children; null when that is not told.
    const LetterRecogniser *recogniser = nullptr;
};

// The window of the property sheet. The pages show a draft of the options; OK and Apply make it hold.
class SheetWindow : public QDialog {
    Q_OBJECT

public:
    explicit SheetWindow(const SheetSources &sources);
    ~SheetWindow() override;

    // The name of the page in front: "Speech", "Output" or "Copyright".
    QString Page() const;
    void SetPage(const QString &page);

    // Fills the pages with what holds now, and comes to the front.
    void Open();

    // Called when the window has gone, by OK, Cancel or its own frame.
    std::function<void()> closed;

protected:
    void done(int result) override;
    void hideEvent(QHideEvent *event) override;

private:
    void Fill();
    void Apply();
    void DraftChanged();
    ServiceOptions Draft() const;

    OptionsKeeper &m_options;
    std::shared_ptr<void> m_observation;
    QTabWidget *m_pages = nullptr;
    OutputPage *m_output = nullptr;
    SpeechPage *m_speech = nullptr;
    QLabel *m_trouble = nullptr;
    QPushButton *m_apply = nullptr;
    bool m_filling = false;
};

} // namespace platform

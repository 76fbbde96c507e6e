#include "platform/agent/SheetPages.h"

#include "platform/voice/RecordedVoices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

namespace platform {

namespace {

constexpr int kRowGap = 6;
constexpr int kColumnGap = 12;
constexpr int kLevelSteps = 100;

QLabel *Caption(const QString &text, QWidget *buddy = nullptr)
{
    auto *label = new QLabel(text);
    if (buddy)
        label->setBuddy(buddy);
    return label;
}

QSlider *Slider(const QString &name, int least, int most)
{
    auto *slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(name);
    slider->setRange(least, most);
    slider->setPageStep(2);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setTickInterval(1);
    return slider;
}

// A slider between the words for its two ends.
QWidget *Between(const QString &left, QSlider *slider, const QString &right)
{
    auto *widget = new QWidget;
    auto *row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kRowGap / 2);
    row->addWidget(Caption(left));
    row->addWidget(slider, 1);
    row->addWidget(Caption(right));
    return widget;
}

// The words below a slider.
QWidget *Ends(const QString &left, const QString &middle, const QString &right)
{
    auto *widget = new QWidget;
    auto *row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(Caption(left));
    row->addStretch();
    row->addWidget(Caption(middle));
    row->addStretch();
    row->addWidget(Caption(right));
    return widget;
}

// Puts a mnemonic before the first letter of `name` that is still free.
QString WithMnemonic(const QString &name, QString &taken)
{
    for (qsizetype index = 0; index < name.size(); ++index) {
        const QChar letter = name[index].toLower();
        if (!letter.isLetter() || taken.contains(letter))
            continue;
        taken += letter;
        return name.left(index) + QLatin1Char('&') + name.mid(index);
    }
    return name;
}

} // namespace

OutputPage::OutputPage(const SheetSources &sources)
    : m_options(sources.options), m_engine(sources.engine), m_voices(sources.voices), m_audio(sources.audio)
{
    setObjectName(QStringLiteral("Output"));
    for (auto &character : sources.characters())
        m_rows.push_back({ std::move(character), nullptr, nullptr });
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(14, 2, 14, 6);
    rows->setSpacing(2);
    rows->addWidget(Balloons());
    rows->addWidget(Voices());
    rows->addWidget(Characters());
    rows->addStretch();
}

QWidget *OutputPage::Balloons()
{
    auto *group = new QGroupBox(tr("Word balloons"));
    m_balloons = new QCheckBox(tr("Show what is said in word &balloons"));
    m_balloons->setObjectName(QStringLiteral("chkBalloons"));
    m_textSize =
        Slider(QStringLiteral("sldTextSize"), ServiceOptions::kSmallestText, ServiceOptions::kLargestText);
    m_textSize->setSingleStep(2);
    m_textSize->setPageStep(4);
    m_textSize->setTickInterval(4);
    m_textSize->setAccessibleName(tr("Text size"));
    m_sample = new QLabel(tr("Well done!"));
    m_sample->setObjectName(QStringLiteral("lblSample"));
    m_sample->setAlignment(Qt::AlignCenter);
    m_sample->setFixedSize(200, 52);

    auto *grid = new QGridLayout(group);
    grid->setContentsMargins(14, 4, 14, 8);
    grid->setHorizontalSpacing(kColumnGap);
    grid->setVerticalSpacing(kRowGap);
    grid->addWidget(m_balloons, 0, 0, 1, 2);
    grid->addWidget(Caption(tr("Text si&ze"), m_textSize), 1, 0);
    grid->addWidget(m_textSize, 1, 1);
    grid->addWidget(m_sample, 0, 2, 2, 1);
    grid->setColumnStretch(1, 1);

    connect(m_balloons, &QCheckBox::toggled, this, [this](bool on) {
        m_textSize->setEnabled(on);
        m_sample->setEnabled(on);
        changed();
    });
    connect(m_textSize, &QSlider::valueChanged, this, [this] {
        ShowSample();
        changed();
    });
    return group;
}

QWidget *OutputPage::Voices()
{
    auto *group = new QGroupBox(tr("Voices and sounds"));
    m_voice = new QCheckBox(tr("Speak a&loud"));
    m_voice->setObjectName(QStringLiteral("chkVoice"));
    m_effects = new QCheckBox(tr("Play sound &effects"));
    m_effects->setObjectName(QStringLiteral("chkEffects"));
    m_rate = Slider(QStringLiteral("sldRate"), -ServiceOptions::kMostRate, ServiceOptions::kMostRate);
    m_rate->setAccessibleName(tr("Speaking rate, from slow to fast"));

    auto *grid = new QGridLayout(group);
    grid->setContentsMargins(14, 4, 14, 8);
    grid->setHorizontalSpacing(kColumnGap);
    grid->setVerticalSpacing(kRowGap);
    grid->addWidget(m_voice, 0, 0);
    grid->addWidget(m_effects, 1, 0);
    grid->addWidget(Caption(tr("&Speed"), m_rate), 0, 1);
    grid->addWidget(m_rate, 0, 2);
    grid->addWidget(Ends(tr("slow"), tr("usual"), tr("fast")), 1, 2, Qt::AlignTop);
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(0, 230);

    for (QCheckBox *box : { m_voice, m_effects })
        connect(box, &QCheckBox::toggled, this, [this] { changed(); });
    connect(m_rate, &QSlider::valueChanged, this, [this] { changed(); });
    return group;
}

QWidget *OutputPage::Characters()
{
    auto *group = new QGroupBox(tr("Who sounds how"));
    auto *grid = new QGridLayout(group);
    grid->setContentsMargins(14, 4, 14, 8);
    grid->setHorizontalSpacing(kColumnGap);
    grid->setVerticalSpacing(kRowGap);
    // What the rest of the sheet has already.
    QString taken = QStringLiteral("aiyobzlsekr");
    int line = 0;
    for (Row &row : m_rows) {
        const QString &name = row.character->name;
        row.voice = new QComboBox;
        row.voice->setObjectName(QStringLiteral("cmbVoice") + name);
        row.voice->setAccessibleName(tr("Voice of %1").arg(name));
        row.voice->addItem(tr("Own voice"), QString());
        for (const RecordedVoice &voice : RecordedVoices()) {
            VoiceSettings settings;
            settings.voice = voice.id;
            if (voice.id != row.character->voice.voice && m_engine.Speaks(settings))
                row.voice->addItem(voice.name, voice.id);
        }
        row.pitch = Slider(QStringLiteral("sldPitch") + name, -ServiceOptions::kMostPitch,
                           ServiceOptions::kMostPitch);
        row.pitch->setAccessibleName(tr("Pitch of %1, from low to high").arg(name));
        auto *attempt = new QPushButton(tr("Try"));
        attempt->setObjectName(QStringLiteral("cmdTry") + name);
        attempt->setAccessibleName(tr("Try the voice of %1").arg(name));
        attempt->setProperty("rank", QStringLiteral("second"));
        attempt->setAutoDefault(true);
        attempt->setFixedSize(76, 32);

        grid->addWidget(Caption(WithMnemonic(name, taken), row.voice), line, 0);
        grid->addWidget(row.voice, line, 1);
        grid->addWidget(Between(tr("low"), row.pitch, tr("high")), line, 2);
        grid->addWidget(attempt, line, 3);
        ++line;
        connect(row.voice, &QComboBox::currentIndexChanged, this, [this, index = line - 1] {
            AllowPitch(m_rows[static_cast<std::size_t>(index)]);
            changed();
        });
        connect(row.pitch, &QSlider::valueChanged, this, [this] { changed(); });
        connect(attempt, &QPushButton::clicked, this,
                [this, index = line - 1] { Try(m_rows[static_cast<std::size_t>(index)]); });
    }
    m_reader = new QComboBox;
    m_reader->setObjectName(QStringLiteral("cmbReader"));
    m_reader->setAccessibleName(tr("What the words of lists are read in"));
    connect(m_reader, &QComboBox::currentIndexChanged, this, [this] { changed(); });
    grid->addWidget(Caption(tr("Lists a&re read in"), m_reader), line, 0, 1, 2);
    grid->addWidget(m_reader, line, 2, 1, 2);
    ++line;

    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(1, 190);
    return group;
}

// A slider that changes nothing would be puzzling, and so would one that rests without a word.
void OutputPage::AllowPitch(const Row &row)
{
    const QString chosen = row.voice->currentData().toString();
    const QString &voice = chosen.isEmpty() ? row.character->voice.voice : chosen;
    const auto &voices = RecordedVoices();
    const auto found = std::find_if(voices.begin(), voices.end(),
                                    [&voice](const RecordedVoice &other) { return other.id == voice; });
    const bool canBeSet = found == voices.end() || found->pitched;
    const QString why =
        canBeSet ? QString() : tr("This voice has a melody of its own and can be no lower or higher.");
    QWidget *setting = row.pitch->parentWidget(); // with the words at its ends
    setting->setEnabled(canBeSet);
    setting->setToolTip(why);
    row.pitch->setAccessibleDescription(why);
}

void OutputPage::FillReaders(const QString &chosen)
{
    const QSignalBlocker quiet(m_reader);
    m_reader->clear();
    const VoiceChoices choices = m_voices.Available();
    for (const VoiceChoice &choice : choices)
        m_reader->addItem(choice.name, choice.id == choices.front().id ? QString() : choice.id);
    // One that this computer lacks just now stays chosen.
    if (m_reader->findData(chosen) < 0)
        m_reader->addItem(tr("The chosen language, missing now"), chosen);
    m_reader->setCurrentIndex(m_reader->findData(chosen));
}

QStringList OutputPage::Names() const
{
    QStringList names;
    for (const Row &row : m_rows)
        names << row.character->name;
    return names;
}

void OutputPage::ShowSample()
{
    QFont type = m_sample->font();
    type.setPixelSize(m_textSize->value());
    type.setBold(true);
    m_sample->setFont(type);
}

void OutputPage::Show(const ServiceOptions &options)
{
    m_balloons->setChecked(options.balloons);
    m_textSize->setValue(options.balloonTextSize);
    m_textSize->setEnabled(options.balloons);
    m_sample->setEnabled(options.balloons);
    ShowSample();
    m_voice->setChecked(options.voice);
    m_rate->setValue(options.speakingRate);
    m_effects->setChecked(options.soundEffects);
    for (const Row &row : m_rows) {
        const CharacterVoice chosen = options.VoiceOf(row.character->name);
        row.voice->setCurrentIndex(std::max(0, row.voice->findData(chosen.voice)));
        row.pitch->setValue(chosen.pitch);
        AllowPitch(row);
    }
    FillReaders(options.readingVoice);
}

void OutputPage::Take(ServiceOptions &options) const
{
    options.balloons = m_balloons->isChecked();
    options.balloonTextSize = m_textSize->value();
    options.voice = m_voice->isChecked();
    options.speakingRate = m_rate->value();
    options.soundEffects = m_effects->isChecked();
    options.readingVoice = m_reader->currentData().toString();
    for (const Row &row : m_rows)
        options.SetVoiceOf(row.character->name, { row.voice->currentData().toString(), row.pitch->value() });
}

// Says a line as the character would with what stands on the page, whether it has been applied or not.
void OutputPage::Try(const Row &row)
{
    StopTrying();
    ServiceOptions draft;
    Take(draft);
    const QString &name = row.character->name;
    const VoiceSettings settings = WithVoice(row.character->voice, draft.VoiceOf(name));
    tell(QString());
    if (!m_audio.Usable())
        return tell(tr("No sound can be played here just now."));
    const auto made = [this](std::shared_ptr<const Utterance> utterance) {
        const bool plays = utterance && m_audio.Play(std::move(utterance), [this](bool whole) {
            if (!whole)
                tell(tr("The sound stopped before its end."));
        });
        if (!plays)
            tell(tr("This voice cannot be heard just now."));
    };
    // The draft holds for this line alone.
    ApplyVoices(draft, Names(), m_voices);
    m_order = m_engine.Synthesise(SpeechText::Parse(tr("Hello, I am %1. This is my voice.").arg(name)),
                                  settings, made);
    ApplyVoices(m_options.Now(), Names(), m_voices);
    if (!m_order)
        tell(tr("This voice cannot be heard just now."));
}

void OutputPage::StopTrying()
{
    m_order.reset();
    m_audio.Stop();
}

SpeechPage::SpeechPage(Microphone &microphone, const LetterRecogniser *recogniser) : m_microphone(microphone)
{
    setObjectName(QStringLiteral("Speech"));
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(14, 6, 14, 8);
    rows->setSpacing(10);
    rows->addWidget(Spelling(recogniser));
    rows->addWidget(Listening());
    rows->addStretch();
    m_microphone.devicesChanged = [this] {
        FillDevices(ChosenDevice());
        if (isVisible())
            Listen();
    };
}

QWidget *SpeechPage::Spelling(const LetterRecogniser *recogniser)
{
    auto *spelling = new QGroupBox(tr("Spelling by voice"));
    m_spelling = new QCheckBox(tr("Children may spell by &voice"));
    m_spelling->setObjectName(QStringLiteral("chkSpelling"));
    auto *about =
        new QLabel(tr("Hold the Scroll Lock key, say one letter, and let go, while nobody else speaks. The "
                      "game shows what it may have been; a click takes it, or a tap of the key takes the "
                      "first. Say \"go ahead\" for the answer button. It works best in a quiet room and "
                      "is never sure: with the keyboard a child learns more. Nothing that is heard is "
                      "kept or sent anywhere."));
    about->setWordWrap(true);
    // Without a recogniser it can be switched off, and not on.
    const QString obstacle = recogniser ? recogniser->Obstacle() : QString();
    auto *trouble = new QLabel(obstacle);
    trouble->setObjectName(QStringLiteral("lblRecogniser"));
    trouble->setWordWrap(true);
    // It is seen with the page; told to be seen now it would stand alone.
    if (obstacle.isEmpty())
        trouble->hide();
    m_canSpell = obstacle.isEmpty();
    auto *spellingRows = new QVBoxLayout(spelling);
    spellingRows->setContentsMargins(14, 6, 14, 12);
    spellingRows->setSpacing(kRowGap);
    spellingRows->addWidget(m_spelling);
    spellingRows->addWidget(about);
    spellingRows->addWidget(trouble);

    connect(m_spelling, &QCheckBox::toggled, this, [this] { changed(); });
    return spelling;
}

QWidget *SpeechPage::Listening()
{
    auto *listening = new QGroupBox(tr("What is listened with"));
    m_device = new QComboBox;
    m_device->setObjectName(QStringLiteral("cmbMicrophone"));
    m_device->setAccessibleName(tr("Microphone"));
    m_level = new QProgressBar;
    m_level->setObjectName(QStringLiteral("barLevel"));
    m_level->setAccessibleName(tr("How loud the microphone hears"));
    m_level->setRange(0, kLevelSteps);
    m_level->setTextVisible(false);
    m_level->setFixedHeight(26);
    m_state = new QLabel;
    m_state->setObjectName(QStringLiteral("lblMicrophone"));
    m_state->setWordWrap(true);
    m_state->setMinimumHeight(56);
    m_state->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto *grid = new QGridLayout(listening);
    grid->setContentsMargins(14, 6, 14, 12);
    grid->setHorizontalSpacing(kColumnGap);
    grid->setVerticalSpacing(kRowGap + 2);
    grid->addWidget(Caption(tr("&Microphone"), m_device), 0, 0);
    grid->addWidget(m_device, 0, 1);
    grid->addWidget(Caption(tr("Loudness")), 1, 0);
    grid->addWidget(m_level, 1, 1);
    grid->addWidget(m_state, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);

    connect(m_device, &QComboBox::currentIndexChanged, this, [this] {
        if (isVisible())
            Listen();
        changed();
    });
    return listening;
}

SpeechPage::~SpeechPage()
{
    m_microphone.devicesChanged = nullptr;
    m_microphone.Stop();
}

QString SpeechPage::ChosenDevice() const
{
    return m_device->currentData().toString();
}

void SpeechPage::FillDevices(const QString &chosen)
{
    const QSignalBlocker quiet(m_device);
    m_device->clear();
    m_device->addItem(tr("The one the desktop has chosen"), QString());
    for (const Microphone::Device &device : m_microphone.Devices())
        m_device->addItem(device.name, device.id);
    // One that is unplugged just now stays chosen.
    if (m_device->findData(chosen) < 0)
        m_device->addItem(tr("The chosen one, not plugged in now"), chosen);
    m_device->setCurrentIndex(m_device->findData(chosen));
}

void SpeechPage::Show(const ServiceOptions &options)
{
    m_spelling->setChecked(options.voiceSpelling);
    m_spelling->setEnabled(m_canSpell || options.voiceSpelling);
    FillDevices(options.microphone);
    if (isVisible())
        Listen();
}

void SpeechPage::Take(ServiceOptions &options) const
{
    options.voiceSpelling = m_spelling->isChecked();
    options.microphone = ChosenDevice();
}

void SpeechPage::Listen()
{
    m_level->setValue(0);
    m_microphone.Stop();
    const bool any = !m_microphone.Devices().empty();
    const bool listens = any && m_microphone.Listen(ChosenDevice(), [this](double level) {
        m_level->setValue(qRound(level * kLevelSteps));
    });
    m_level->setEnabled(listens);
    if (listens)
        m_state->setText(tr("Say something: the bar moves when you are heard."));
    else if (any)
        m_state->setText(tr("This microphone cannot be used just now. Perhaps another program has it."));
    else
        m_state->setText(tr("There is no microphone. Plug one in, and it is found at once."));
}

void SpeechPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    Listen();
}

// Nobody is listened to behind his back.
void SpeechPage::hideEvent(QHideEvent *event)
{
    m_microphone.Stop();
    QWidget::hideEvent(event);
}

CopyrightPage::CopyrightPage()
{
    setObjectName(QStringLiteral("Copyright"));
    QString text =
        tr("<h3>The characters of Tumblewick</h3>"
           "<p>Version %1<br>Copyright 2026 the authors of Tumblewick</p>"
           "<p>Free software under the GNU General Public License, version 3 or, at your choice, any "
           "later version. It comes without any warranty. You may pass it on and change it; the "
           "licence that lies beside the program tells how.</p>"
           "<p>All drawings, motions and sounds of the characters are the authors' own.</p>"
           "<h3>The voices</h3>")
            .arg(QStringLiteral(TUMBLEWICK_VERSION));
    for (const QString &credit : VoiceCredits())
        text += QStringLiteral("<p>%1</p>").arg(credit.toHtmlEscaped());
    auto *browser = new QTextBrowser;
    browser->setObjectName(QStringLiteral("txtCopyright"));
    browser->setAccessibleName(tr("Version, copyright, licence and thanks"));
    browser->setHtml(text);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(14, 14, 14, 10);
    rows->addWidget(browser);
    setFocusProxy(browser);
}

} // namespace platform

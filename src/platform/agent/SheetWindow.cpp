#include "platform/agent/SheetWindow.h"

#include "platform/agent/SheetPages.h"
#include "platform/forms/Backdrop.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWindow>

namespace platform {

namespace {

constexpr int kType = 18; // units
// The width of the wooden edge of the desk.
constexpr int kEdge = 22;
const QSize kSize(720, 540);

} // namespace

SheetWindow::SheetWindow(const SheetSources &sources)
    : QDialog(nullptr,
              Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      m_options(sources.options), m_observation(sources.options.Observe([this] {
          if (isVisible())
              Fill();
      }))
{
    setObjectName(QStringLiteral("PropertySheet"));
    setWindowTitle(tr("Character Properties"));
    // The program ends by its own screens only.
    setAttribute(Qt::WA_QuitOnClose, false);
    // The grown-ups' room; the program's style sheet knows it by this name.
    setProperty("room", QStringLiteral("study"));
    Backdrop::Install(*this, QStringLiteral(":/rooms/study.svg"));
    QFont type = font();
    type.setPixelSize(kType);
    setFont(type);
    setFixedSize(kSize);

    m_output = new OutputPage(sources);
    m_output->changed = [this] { DraftChanged(); };
    m_speech = new SpeechPage(sources.microphone, sources.recogniser);
    m_speech->changed = [this] { DraftChanged(); };
    m_pages = new QTabWidget;
    m_pages->setAccessibleName(tr("Pages"));
    m_pages->addTab(m_output, tr("&Output"));
    m_pages->addTab(m_speech, tr("Speech &input"));
    m_pages->addTab(new CopyrightPage, tr("Cop&yright"));

    auto *ok = new QPushButton(tr("O&K"));
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setProperty("rank", QStringLiteral("main"));
    ok->setDefault(true);
    auto *cancel = new QPushButton(tr("Cancel"));
    cancel->setObjectName(QStringLiteral("cmdCancel"));
    cancel->setProperty("rank", QStringLiteral("second"));
    m_apply = new QPushButton(tr("&Apply"));
    m_apply->setObjectName(QStringLiteral("cmdApply"));
    m_apply->setProperty("rank", QStringLiteral("second"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_apply, &QPushButton::clicked, this, [this] { Apply(); });

    m_trouble = new QLabel;
    m_trouble->setObjectName(QStringLiteral("lblTrouble"));
    m_trouble->setWordWrap(true);
    m_output->tell = [this](const QString &text) { m_trouble->setText(text); };

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addWidget(m_trouble, 1);
    for (QPushButton *button : { ok, cancel, m_apply }) {
        button->setAutoDefault(true);
        button->setFixedSize(112, 38);
        buttons->addWidget(button);
    }
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(kEdge, kEdge - 6, kEdge, kEdge - 4);
    rows->setSpacing(8);
    rows->addWidget(m_pages, 1);
    rows->addLayout(buttons);
}

SheetWindow::~SheetWindow() = default;

QString SheetWindow::Page() const
{
    return m_pages->currentWidget()->objectName();
}

void SheetWindow::SetPage(const QString &page)
{
    for (int index = 0; index < m_pages->count(); ++index) {
        if (m_pages->widget(index)->objectName() == page)
            m_pages->setCurrentIndex(index);
    }
}

void SheetWindow::Open()
{
    if (!isVisible()) {
        Fill();
        // A sheet that lay under the screen it was opened from could not be found again.
        const QWidget *screen = QApplication::activeWindow();
        winId();
        windowHandle()->setTransientParent(screen ? screen->windowHandle() : nullptr);
        // The keyboard begins with the first control of the page.
        m_pages->currentWidget()->setFocus();
        focusNextChild();
    }
    show();
    raise();
    activateWindow();
}

void SheetWindow::Fill()
{
    m_filling = true;
    m_trouble->clear();
    m_output->Show(m_options.Now());
    m_speech->Show(m_options.Now());
    m_filling = false;
    DraftChanged();
}

ServiceOptions SheetWindow::Draft() const
{
    ServiceOptions draft = m_options.Now();
    m_output->Take(draft);
    m_speech->Take(draft);
    return draft;
}

void SheetWindow::DraftChanged()
{
    if (!m_filling)
        m_apply->setEnabled(Draft() != m_options.Now());
}

void SheetWindow::Apply()
{
    m_options.Set(Draft());
}

void SheetWindow::done(int result)
{
    if (result == Accepted)
        Apply();
    QDialog::done(result);
}

void SheetWindow::hideEvent(QHideEvent *event)
{
    m_output->StopTrying();
    QDialog::hideEvent(event);
    if (closed)
        closed();
}

} // namespace platform

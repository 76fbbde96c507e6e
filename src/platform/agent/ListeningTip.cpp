#include "platform/agent/ListeningTip.h"

#include "platform/agent/ScreenArea.h"
#include "platform/agent/StageColours.h"
#include "platform/agent/StageWindow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace platform {

namespace {

constexpr int kType = 18; // units
constexpr int kLetterType = 26;
constexpr int kRound = 12;
constexpr int kGap = 4;
constexpr int kWidest = 340;

} // namespace

class ListeningTip::Window final : public StageWindow {
public:
    explicit Window(std::function<void(int)> chosen) : m_chosen(std::move(chosen))
    {
        setObjectName(QStringLiteral("listeningTip"));
        m_text = new QLabel;
        m_text->setAlignment(Qt::AlignCenter);
        m_text->setWordWrap(true);
        m_text->setFixedWidth(kWidest - 4 * kRound);
        // The program's own style has light text for dark rooms; this is ink on paper.
        m_text->setStyleSheet(QStringLiteral("color: %1; background: transparent; font: bold %2px;")
                                  .arg(kInk.name())
                                  .arg(kType));
        auto *rows = new QVBoxLayout(this);
        rows->setSizeConstraint(QLayout::SetFixedSize);
        rows->setContentsMargins(2 * kRound, kRound, 2 * kRound, kRound);
        rows->addWidget(m_text);
        m_row = new QHBoxLayout;
        rows->addLayout(m_row);
    }

    void Fill(const QString &text, const QStringList &choices)
    {
        m_text->setText(text);
        setAccessibleName(text);
        for (QPushButton *button : m_buttons) {
            // One of them may be on the stack, and none is to take room till it goes.
            m_row->removeWidget(button);
            button->hide();
            button->deleteLater();
        }
        m_buttons.clear();
        for (int index = 0; index < choices.size(); ++index)
            Add(choices[index], index, index == 0 ? "main" : "second");
        if (!choices.isEmpty()) {
            Add(QStringLiteral("\u2715"), -1, "danger");
            m_buttons.back()->setAccessibleName(QObject::tr("None of these"));
        }
        layout()->activate();
        adjustSize();
    }

    void Place(const QRect &frame)
    {
        const QRect area = ScreenAreaAt(frame.center());
        int top = frame.bottom() + 1 + kGap;
        if (top + height() > area.bottom() + 1)
            top = std::min(frame.bottom() + 1, area.bottom() + 1) - height();
        const int left = frame.center().x() - width() / 2;
        move(MovedInto(area, { left, top }, size()));
    }

protected:
    const QImage &Picture() const override { return m_sign; }
    void resizeEvent(QResizeEvent *event) override
    {
        StageWindow::resizeEvent(event);
        m_sign = BlankPicture();
        QPainter painter(&m_sign);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(kWood, 3));
        painter.setBrush(kPaper);
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), kRound, kRound);
        painter.end();
        PictureHasChanged();
    }

private:
    void Add(const QString &caption, int index, const char *rank)
    {
        auto *button = new QPushButton(caption);
        button->setObjectName(QStringLiteral("choice%1").arg(index));
        button->setProperty("rank", QLatin1String(rank));
        button->setFocusPolicy(Qt::NoFocus);
        button->setMinimumSize(56, 48);
        QFont type = button->font();
        type.setPixelSize(kLetterType);
        type.setBold(true);
        button->setFont(type);
        connect(button, &QPushButton::clicked, this, [this, index] { m_chosen(index); });
        m_row->addWidget(button);
        // Now, or a sign that is seen would be measured and placed without it.
        button->show();
        m_buttons.push_back(button);
    }

    const std::function<void(int)> m_chosen;
    QLabel *m_text = nullptr;
    QHBoxLayout *m_row = nullptr;
    std::vector<QPushButton *> m_buttons;
    QImage m_sign;
};

ListeningTip::ListeningTip() = default;

ListeningTip::~ListeningTip() = default;

QWidget *ListeningTip::Sign() const
{
    return m_window.get();
}

void ListeningTip::Show(const QRect &frame, const QString &text, const QStringList &choices)
{
    if (!m_window) {
        m_window = std::make_unique<Window>([this](int index) {
            if (chosen)
                chosen(index);
        });
    }
    m_window->Fill(text, choices);
    m_window->Place(frame);
    m_window->show();
    m_window->BringToFront();
}

void ListeningTip::Hide()
{
    if (m_window)
        m_window->hide();
}

} // namespace platform

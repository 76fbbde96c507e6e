#include "platform/forms/QtBoxes.h"

#include "platform/Services.h"
#include "platform/forms/KeptInSight.h"
#include "platform/forms/Screen.h"
#include "platform/forms/ScreenStack.h"
#include "platform/forms/ScreenTrace.h"
#include "platform/system/Process.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr int kWidestText = 520;
constexpr int kNarrowestText = 200;
// What is done sooner is not worth a box that only flashes up.
constexpr std::chrono::milliseconds kPatience(400);

struct ButtonText {
    BoxAnswer answer;
    const char *name;
    const char *caption;
};
constexpr std::array kButtonTexts = {
    ButtonText{ BoxAnswer::Ok, "Ok", "OK" },
    ButtonText{ BoxAnswer::Yes, "Yes", "&Yes" },
    ButtonText{ BoxAnswer::No, "No", "&No" },
    ButtonText{ BoxAnswer::Cancel, "Cancel", "Cancel" },
};

const ButtonText &TextOf(BoxAnswer answer)
{
    return *std::find_if(kButtonTexts.begin(), kButtonTexts.end(),
                         [&](const ButtonText &text) { return text.answer == answer; });
}

std::vector<BoxAnswer> AnswersOf(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::Ok:
        return { BoxAnswer::Ok };
    case BoxButtons::YesNo:
        return { BoxAnswer::Yes, BoxAnswer::No };
    case BoxButtons::YesNoCancel:
        return { BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel };
    }
    return {};
}

// A box that is closed by code has the number of its button as the result.
int ResultOf(BoxAnswer answer)
{
    return static_cast<int>(answer) + 1;
}

// A box from its opening to its end, as long as which it is the innermost one. Keeps mouse and keyboard from
// all screens. The box's modality does so only for the screen in front, and only once it is seen; a modality
// of the whole program would keep them from the characters too.
class OpenBox : public QObject {
public:
    OpenBox(QDialog &box, QDialog *&innermost)
        : m_box(box), m_innermost(innermost), m_outer(std::exchange(innermost, &box))
    {
        if (box.parentWidget())
            box.setWindowModality(Qt::WindowModal);
        ScreenStack::Instance().BoxOpened();
        qApp->installEventFilter(this);
    }
    ~OpenBox() override
    {
        ScreenStack::Instance().BoxClosed();
        m_innermost = m_outer;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::Close:
            if (!watched->isWindowType() || !ScreenStack::Instance().IsScreenWindow(watched))
                return false;
            // Taken as a plain key it presses no button by its letter.
            event->setAccepted(event->type() == QEvent::ShortcutOverride);
            return true;
        case QEvent::WindowActivate:
            // A click on a screen takes the focus there, where the keys for the box would be lost.
            if (auto *widget = qobject_cast<QWidget *>(watched);
                widget && widget->isWindow() &&
                ScreenStack::Instance().IsScreenWindow(widget->windowHandle()))
                QMetaObject::invokeMethod(
                    this, [this] { TakeFocusBack(); }, Qt::QueuedConnection);
            return false;
        default:
            return false;
        }
    }

private:
    void TakeFocusBack()
    {
        if (!m_box.isVisible() || QApplication::activeModalWidget() != &m_box)
            return; // another box lies over it
        m_box.raise();
        m_box.activateWindow();
    }

    QDialog &m_box;
    QDialog *&m_innermost;
    QDialog *const m_outer;
};

// What a label may break where it has to: words that are wider than the box get invisible places to break at.
QString Breakable(const QString &text, const QFontMetrics &metrics, int width)
{
    const QString breakHere(QChar(0x200B));
    QString result;
    result.reserve(text.size());
    qsizetype wordStart = 0;
    for (qsizetype at = 0; at <= text.size(); ++at) {
        if (at < text.size() && !text[at].isSpace())
            continue;
        QString word = text.mid(wordStart, at - wordStart);
        if (word.size() * metrics.averageCharWidth() > width / 2 && metrics.horizontalAdvance(word) > width) {
            const qsizetype step = 8;
            for (qsizetype place = (word.size() - 1) / step * step; place > 0; place -= step)
                if (!word[place].isLowSurrogate())
                    word.insert(place, breakHere);
        }
        result += word;
        if (at < text.size())
            result += text[at];
        wordStart = at + 1;
    }
    return result;
}

// The text of a box: as it is, wrapped, scrolling when it is too long for the display.
QWidget *MakeText(const QString &given, QDialog &box)
{
    QString text = given;
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    box.setAccessibleName(text);

    const QSize space = box.screen()->availableSize();
    auto *scroller = new QScrollArea(&box);
    auto *label = new QLabel;
    label->setObjectName(QStringLiteral("boxText"));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setWordWrap(true);
    scroller->setWidget(label);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    box.ensurePolished();

    const int widest = std::min(kWidestText, space.width() * 2 / 3);
    const QFontMetrics metrics = label->fontMetrics();
    const int natural = metrics.boundingRect(QRect(0, 0, widest, 100000), Qt::TextWordWrap, text).width() + 4;
    label->setText(Breakable(text, metrics, widest));
    int width = std::clamp(natural, kNarrowestText, widest);
    const int tallest = space.height() / 2;
    int height = std::max(label->heightForWidth(width), metrics.lineSpacing());
    if (height > tallest) {
        height = tallest;
        width += scroller->verticalScrollBar()->sizeHint().width();
        scroller->setFocusPolicy(Qt::StrongFocus); // so that keys can scroll it
        scroller->verticalScrollBar()->setSingleStep(metrics.lineSpacing());
    } else {
        scroller->setFocusPolicy(Qt::NoFocus);
        scroller->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    scroller->setFixedSize(width, height);
    return scroller;
}

QPushButton *AddButton(QDialog &box, QHBoxLayout &row, BoxAnswer answer)
{
    const ButtonText &text = TextOf(answer);
    auto *button = new QPushButton(QString::fromLatin1(text.caption), &box);
    button->setObjectName(QString::fromLatin1(text.name));
    button->setAutoDefault(true);
    const bool isWayOut = answer == BoxAnswer::No || answer == BoxAnswer::Cancel;
    button->setProperty("rank", isWayOut ? QStringLiteral("second") : QStringLiteral("main"));
    row.addWidget(button);
    QObject::connect(button, &QPushButton::clicked, &box, [&box, answer] { box.done(ResultOf(answer)); });
    return button;
}

// A line break would tear the trace's line apart.
QString OnOneLine(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\\n"))
        .replace(QLatin1Char('\n'), QLatin1String("\\n"))
        .replace(QLatin1Char('\r'), QLatin1String("\\n"));
}

// Tells that something is being done, from its showing to its end. The user cannot close it.
class BusyBox : public QDialog {
public:
    explicit BusyBox(QWidget *parent) : QDialog(parent) {}
    ~BusyBox() override
    {
        if (m_isBusy)
            QApplication::restoreOverrideCursor();
    }
    void reject() override {}

protected:
    void showEvent(QShowEvent *event) override
    {
        QDialog::showEvent(event);
        if (!std::exchange(m_isBusy, true))
            QApplication::setOverrideCursor(Qt::WaitCursor);
    }

private:
    bool m_isBusy = false;
};

// Gives a box its look, its title and its text. Gives the column in which everything else comes below.
QVBoxLayout &SetUp(QDialog &box, const QString &name, const QString &title, const QString &text)
{
    // Who could make a box small would wait for a program that waits for an answer.
    box.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowCloseButtonHint);
    // The style sheet knows boxes by these. They are paper and ink, whatever the room of the screen.
    box.setObjectName(name);
    box.setProperty("room", QStringLiteral("study"));
    // Qt would put the program's name where there is nothing at all.
    box.setWindowTitle(title.isEmpty() ? QStringLiteral(" ") : title);
    auto *column = new QVBoxLayout(&box);
    column->setContentsMargins(24, 20, 24, 18);
    column->setSpacing(14);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(MakeText(text, box));
    return *column;
}

} // namespace

BoxAnswer QtBoxes::MessageBox(const QString &text, BoxButtons buttons, const QString &title)
{
    QDialog box(m_open ? m_open : WindowInFront());
    QVBoxLayout &column =
        SetUp(box, QStringLiteral("MessageBox"), title.isNull() ? The().process.Title() : title, text);
    column.setSpacing(18);
    auto *row = new QHBoxLayout;
    column.addLayout(row);
    row->addStretch();
    const std::vector<BoxAnswer> answers = AnswersOf(buttons);
    for (const BoxAnswer answer : answers) {
        QPushButton *button = AddButton(box, *row, answer);
        if (answer == answers.front()) {
            button->setDefault(true);
            button->setFocus();
        }
        // The letter alone is enough, since nothing can be typed here.
        if (const auto letter = QKeySequence::mnemonic(button->text()); !letter.isEmpty())
            QObject::connect(new QShortcut(QKeySequence(letter[0].key()), &box), &QShortcut::activated,
                             button, &QPushButton::click);
    }
    row->addStretch();

    Run(box);
    const auto pressed = std::find_if(answers.begin(), answers.end(),
                                      [&](BoxAnswer answer) { return ResultOf(answer) == box.result(); });
    // Closed from the frame or by Escape: the last button is the one that changes least.
    const BoxAnswer answer = pressed != answers.end() ? *pressed : answers.back();
    qCDebug(ScreenTrace).noquote().nospace()
        << "box: \"" << box.windowTitle() << "\" \"" << OnOneLine(text) << "\" -> " << TextOf(answer).name;
    return answer;
}

QString QtBoxes::InputBox(const QString &prompt)
{
    QDialog box(m_open ? m_open : WindowInFront());
    QVBoxLayout &column = SetUp(box, QStringLiteral("InputBox"), The().process.Title(), prompt);
    auto *field = new QLineEdit(&box);
    field->setObjectName(QStringLiteral("boxField"));
    field->setAccessibleName(prompt);
    field->setMinimumWidth(300);
    column.addWidget(field);
    auto *row = new QHBoxLayout;
    column.addLayout(row);
    row->addStretch();
    AddButton(box, *row, BoxAnswer::Ok)->setDefault(true);
    AddButton(box, *row, BoxAnswer::Cancel);
    field->setFocus();

    Run(box);
    const bool accepted = box.result() == ResultOf(BoxAnswer::Ok);
    // What was typed may be a password, so the trace keeps it to itself.
    qCDebug(ScreenTrace).noquote().nospace() << "box: \"" << box.windowTitle() << "\" \"" << OnOneLine(prompt)
                                             << "\" -> " << (accepted ? "Ok" : "Cancel");
    return accepted ? field->text() : QString();
}

void QtBoxes::WhileBusy(const QString &text, const std::function<void()> &work)
{
    BusyBox box(m_open ? m_open : WindowInFront());
    QVBoxLayout &column = SetUp(box, QStringLiteral("BusyBox"), The().process.Title(), text);
    box.setWindowFlag(Qt::WindowCloseButtonHint, false);
    auto *bar = new QProgressBar(&box);
    bar->setRange(0, 0); // nobody knows how long it takes
    bar->setTextVisible(false);
    column.addWidget(bar);

    const OpenBox open(box, m_open);
    std::optional<KeptInSight> place;
    QTimer::singleShot(kPatience, &box, [&] {
        place.emplace(box);
        box.show();
    });
    QEventLoop loop;
    std::exception_ptr failure;
    std::thread worker([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    worker.join();
    if (failure)
        std::rethrow_exception(failure);
}

void QtBoxes::Run(QDialog &box)
{
    const OpenBox open(box, m_open);
    const KeptInSight place(box);
    box.exec();
}

} // namespace platform

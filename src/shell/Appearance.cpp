#include "shell/Appearance.h"

#include "platform/forms/Backdrop.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QColor>
#include <QEvent>
#include <QFont>
#include <QFontInfo>
#include <QFontMetrics>
#include <QGraphicsEffect>
#include <QIcon>
#include <QLabel>
#include <QLinearGradient>
#include <QListView>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPushButton>
#include <QResource>
#include <QString>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextFrame>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <iterator>

// Has to stand outside of every namespace.
static void InitialiseResources()
{
    Q_INIT_RESOURCE(tumblewick);
}

namespace tumblewick {

namespace {

constexpr const char *kFontAskedFor = "Comic Sans MS";
constexpr const char *kFontStandingIn = "Comic Neue";

// What a button is to the player; the style sheet colours it by that.
constexpr const char *kMain = "main";     // what one came for
constexpr const char *kSecond = "second"; // the other things to do
constexpr const char *kQuiet = "quiet";   // help, about, and ways out
constexpr const char *kDanger = "danger"; // what takes something away

struct ButtonLook {
    const char *screen; // nullptr: any screen
    const char *control;
    const char *picture;
    const char *rank;
};

// clang-format off
// The first row that fits is used.
constexpr ButtonLook kButtonLooks[] = {
    { "frmMenu1", "cmdPlay", "spelling", kMain },
    { "frmMenu1", "Command3", "quiz", kMain },
    { "frmMenu1", "cmdCreate", "lists", kSecond },
    { "frmMenu1", "cmdSettings", "settings", kSecond },
    { "frmMenu1", "cmdAbout", "about", kQuiet },
    { "frmMenu1", "Command1", "quit", kQuiet },
    { "frmSpell1", "cmdGo", "go", kMain },
    { "frmSpell1", "cmdReplay", "replay", kSecond },
    { "frmSpell1", "cmdPass", "pass", kSecond },
    { "frmSpell1", "cmdHint", "hint", kSecond },
    { "frmSpell1", "cmdNew", "curtain", kMain },
    { "frmSpell1", "cmdAgain", "again", kMain },
    { "frmSpell1", "cmdExit", "quit", kQuiet },
    { "frmSettings", "cmdSave", "save", kMain },
    { "frmSettings", "cmdProperties", "settings", kSecond },
    { "frmAbout", "cmdOK", "ok", kMain },
    { "frmAbout", "Command1", "about", kQuiet },
    { "frmList", "cmdNewSpell", "spelling", kMain },
    { "frmList", "cmdEditSpell", "lists", kSecond },
    { "frmList", "cdmDeleteSpell", "delete", kDanger },
    { "frmList", "cmdImportSpell", "import", kSecond },
    { "frmList", "cmdExportSpell", "export", kSecond },
    { "frmList", "cmdAddQuiz", "quiz", kMain },
    { "frmList", "cmdEditQuiz", "lists", kSecond },
    { "frmList", "cmdDeleteQuiz", "delete", kDanger },
    { "frmList", "cmdImportQuiz", "import", kSecond },
    { "frmList", "cmdExportQuiz", "export", kSecond },
    { "frmSpelling1", "Command1", "add", kMain },
    { "frmSpelling1", "Command2", "delete", kDanger },
    { "frmSpelling1", "Command3", "save", kMain },
    { "frmSpelling1", "Command4", "menu", kSecond },
    { "frmSpelling1", "Command5", "help", kQuiet },
    { "frmQuiz1", "Command2", "menu", kSecond },
    { nullptr, "cmdNext", "next", kMain },
    { nullptr, "cmdOK", "ok", kMain },
    { nullptr, "cmdback", "back", kSecond },
    { nullptr, "cmdMenu", "menu", kSecond },
    { nullptr, "cmdExit", "menu", kSecond },
    { nullptr, "cmdHelp", "help", kQuiet },
    { nullptr, "cmdAdd", "add", kMain },
    { nullptr, "cmdSave", "save", kMain },
    { nullptr, "cmdDel", "delete", kDanger },
    { nullptr, "cmdDelete", "delete", kDanger },
    { nullptr, "cmdTest", "test", kSecond },
    { nullptr, "cmdTestit", "test", kSecond },
    { nullptr, "cmdETest", "test", kSecond },
    { nullptr, "cmdETest2", "test", kSecond },
    { nullptr, "cmdATest", "test", kSecond },
    { nullptr, "cmdATest2", "test", kSecond },
    { nullptr, "cmdTips", "help", kQuiet },
    { nullptr, "cmdImport", "import", kMain },
    { nullptr, "cmdExport", "export", kMain },
};
// clang-format on

struct PanelLook {
    const char *screen, *control, *picture;
};

constexpr PanelLook kPanelLooks[] = {
    { "frmSpell1", "Shape1", "stage" },
    { "frmSpell1", "Shape2", "corner" },
    { "frmSpell1", "Shape3", "sign" },
};

// The style sheet and the drawing of the room go by this name.
QString NameOf(Room room)
{
    switch (room) {
    case Room::Menu:
        return QStringLiteral("menu");
    case Room::SetUp:
        return QStringLiteral("setup");
    case Room::Game:
        return QStringLiteral("game");
    case Room::Study:
        break;
    }
    return QStringLiteral("study");
}

// The buttons of the hub keep their size, so that a wide window has room for an ornament beside them.
QString DrawingOf(const QString &screen, Room room)
{
    return screen == QLatin1String("frmList") ? QStringLiteral("hub") : NameOf(room);
}

const ButtonLook *LookOf(const QString &screen, const QString &control)
{
    const auto found =
        std::find_if(std::begin(kButtonLooks), std::end(kButtonLooks), [&](const ButtonLook &look) {
            return (!look.screen || screen == QLatin1String(look.screen)) &&
                   control == QLatin1String(look.control);
        });
    return found == std::end(kButtonLooks) ? nullptr : found;
}

// Fonts in points change with the desktop's settings, the rectangles they stand in do not.
void FontInPixels(QWidget &widget)
{
    QFont font = widget.font();
    if (font.pointSizeF() <= 0)
        return;
    font.setPixelSize(qRound(font.pointSizeF() * 96 / 72));
    widget.setFont(font);
}

// Shows the answers of a question one below the other. They share the height of the list, long ones wrap in
// full, and the badges grow with the type and keep their colours when an answer is selected.
class AnswerDelegate : public QStyledItemDelegate {
public:
    explicit AnswerDelegate(QListView &view) : QStyledItemDelegate(&view), m_view(view) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const override
    {
        const QAbstractItemModel &answers = *index.model();
        int needed = 0;
        for (int row = 0; row < answers.rowCount(); ++row)
            needed += HeightOf(answers.index(row, 0));
        const int spare = m_view.viewport()->height() - needed;
        const int share = std::max(0, spare / std::max(answers.rowCount(), kAnswers));
        return QSize(m_view.viewport()->width(), HeightOf(index) + share);
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (option->icon.isNull())
            return;
        option->decorationSize = QSize(BadgeSize(), BadgeSize());
        const QPixmap picture = option->icon.pixmap(option->decorationSize, m_view.devicePixelRatioF());
        QIcon always;
        for (QIcon::Mode mode : { QIcon::Normal, QIcon::Selected, QIcon::Active })
            always.addPixmap(picture, mode);
        option->icon = always;
    }

private:
    int BadgeSize() const { return QFontInfo(m_view.font()).pixelSize() * 3 / 2; }

    int HeightOf(const QModelIndex &index) const
    {
        const int width = std::max(1, m_view.viewport()->width() - BadgeSize() - kBesideText);
        const QRect text = QFontMetrics(m_view.font())
                               .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap,
                                             index.data(Qt::DisplayRole).toString());
        return std::max(text.height(), BadgeSize()) + kAboveAndBelow;
    }

    static constexpr int kAnswers = 4;
    // What the style sheet's borders and the gap behind the badge take.
    static constexpr int kBesideText = 28;
    static constexpr int kAboveAndBelow = 7;
    QListView &m_view;
};

// Lets the text of the score panel sink to its foot, as far as there is room: the genie's mist hangs over the
// top of the panel.
class SunkenText : public QObject {
public:
    explicit SunkenText(QTextEdit &panel) : QObject(&panel), m_panel(panel)
    {
        panel.viewport()->installEventFilter(this);
        QObject::connect(panel.document(), &QTextDocument::contentsChanged, this, [this] { Sink(); });
        // A panel that was not shown yet has no lines to measure.
        QObject::connect(panel.document()->documentLayout(),
                         &QAbstractTextDocumentLayout::documentSizeChanged, this, [this] { Sink(); });
        Sink();
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            Sink();
        return QObject::eventFilter(watched, event);
    }

private:
    void Sink()
    {
        if (m_isSinking)
            return;
        const QTextDocument &document = *m_panel.document();
        qreal textHeight = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            if (block.next().isValid() || block.length() > 1) // the line behind the last line feed is empty
                textHeight += document.documentLayout()->blockBoundingRect(block).height();
        const qreal room = m_panel.viewport()->height() - textHeight - document.documentMargin();
        QTextFrameFormat format = document.rootFrame()->frameFormat();
        const qreal margin = std::clamp(std::floor(room), document.documentMargin(), kMistReaches);
        if (format.topMargin() == margin)
            return;
        m_isSinking = true;
        format.setTopMargin(margin);
        document.rootFrame()->setFrameFormat(format);
        m_isSinking = false;
    }

    static constexpr qreal kMistReaches = 40;
    QTextEdit &m_panel;
    bool m_isSinking = false;
};

// Keeps the picture of a button as large against the button as it was designed.
class PictureScale : public QObject {
public:
    explicit PictureScale(QPushButton &button)
        : QObject(&button), m_button(button), m_designHeight(button.height()),
          m_designPicture(button.iconSize())
    {
        button.installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Resize && m_designHeight > 0)
            m_button.setIconSize(m_designPicture * m_button.height() / m_designHeight);
        return QObject::eventFilter(watched, event);
    }

private:
    QPushButton &m_button;
    const int m_designHeight;
    const QSize m_designPicture;
};

// Letters of light: the text of the label from pale to deep gold, with a dark edge and a shadow on the
// boards.
class LampLetters : public QGraphicsEffect {
public:
    using QGraphicsEffect::QGraphicsEffect;

    QRectF boundingRectFor(const QRectF &source) const override
    {
        return source.adjusted(-kEdge, -kEdge, kEdge, kEdge + kDrop);
    }

protected:
    void draw(QPainter *painter) override
    {
        QPoint place;
        const QPixmap letters = sourcePixmap(Qt::LogicalCoordinates, &place, NoPad);
        if (letters.isNull())
            return;
        const QPixmap shadow = Tinted(letters, QColor(0x1a, 0x0c, 0x24, 150));
        const QPixmap edge = Tinted(letters, QColor(0x3a, 0x1a, 0x2e));
        QLinearGradient gold(0, letters.deviceIndependentSize().height() * 0.15, 0,
                             letters.deviceIndependentSize().height() * 0.85);
        gold.setColorAt(0, QColor(0xff, 0xf6, 0xcf));
        gold.setColorAt(0.5, QColor(0xff, 0xd3, 0x6e));
        gold.setColorAt(1, QColor(0xf5, 0x9f, 0x2c));
        painter->drawPixmap(place + QPoint(0, kDrop), shadow);
        for (int step = 0; step < kSteps; ++step) {
            const qreal angle = 2 * M_PI * step / kSteps;
            painter->drawPixmap(QPointF(place) + kEdge * QPointF(std::cos(angle), std::sin(angle)), edge);
        }
        painter->drawPixmap(place, Tinted(letters, gold));
    }

private:
    static QPixmap Tinted(QPixmap letters, const QBrush &brush)
    {
        QPainter painter(&letters);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRectF(QPointF(), letters.deviceIndependentSize()), brush);
        return letters;
    }

    static constexpr int kEdge = 4;
    static constexpr int kDrop = 9;
    static constexpr int kSteps = 24;
};

QPalette LampLight()
{
    const QColor ink(0x2a, 0x1b, 0x3d);
    const QColor paper(0xfb, 0xf6, 0xea);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x1b, 0x1d, 0x4d));
    palette.setColor(QPalette::WindowText, paper);
    palette.setColor(QPalette::Base, paper);
    palette.setColor(QPalette::AlternateBase, QColor(0xf3, 0xea, 0xd6));
    palette.setColor(QPalette::Text, QColor(0x2b, 0x25, 0x40));
    palette.setColor(QPalette::PlaceholderText, QColor(0x6b, 0x62, 0x80));
    palette.setColor(QPalette::Button, QColor(0xff, 0xc8, 0x57));
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0xff, 0xc8, 0x57));
    palette.setColor(QPalette::HighlightedText, ink);
    palette.setColor(QPalette::ToolTipBase, paper);
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::Link, QColor(0x1d, 0x5f, 0x8a));
    return palette;
}

} // namespace

void ApplyAppearance(QApplication &application)
{
    InitialiseResources();
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont::insertSubstitution(QString::fromLatin1(kFontAskedFor), QString::fromLatin1(kFontStandingIn));
    QFont font(QString::fromLatin1(kFontAskedFor));
    font.setPixelSize(20);
    QApplication::setFont(font);
    QApplication::setPalette(LampLight());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icon.svg")));

    const QResource styleSheet(QStringLiteral(":/tumblewick.qss"));
    application.setStyleSheet(QString::fromUtf8(styleSheet.uncompressedData()));
}

void DressWindow(QWidget &window, Room room)
{
    const QString screen = window.objectName();
    window.setProperty("room", NameOf(room));
    platform::Backdrop::Install(window, QStringLiteral(":/rooms/%1.svg").arg(DrawingOf(screen, room)));
    FontInPixels(window);
    for (QWidget *widget : window.findChildren<QWidget *>())
        FontInPixels(*widget);
    for (const PanelLook &look : kPanelLooks)
        if (screen == QLatin1String(look.screen))
            if (auto *panel = window.findChild<QWidget *>(QString::fromLatin1(look.control)))
                platform::Backdrop::Install(
                    *panel, QStringLiteral(":/panels/%1.svg").arg(QLatin1String(look.picture)));
    for (QPushButton *button : window.findChildren<QPushButton *>())
        if (const ButtonLook *look = LookOf(screen, button->objectName())) {
            button->setIcon(QIcon(QStringLiteral(":/buttons/%1.svg").arg(QLatin1String(look->picture))));
            button->setProperty("rank", QString::fromLatin1(look->rank));
            button->setCursor(Qt::PointingHandCursor);
            new PictureScale(*button);
        }
    if (auto *answers = window.findChild<QListView *>(QStringLiteral("lvwAnswer")))
        answers->setItemDelegate(new AnswerDelegate(*answers));
    if (auto *scores = window.findChild<QTextEdit *>(QStringLiteral("txtScore")))
        new SunkenText(*scores);
    if (room == Room::Menu)
        if (auto *title = window.findChild<QLabel *>(QStringLiteral("Label1")))
            title->setGraphicsEffect(new LampLetters(title));
}

} // namespace tumblewick

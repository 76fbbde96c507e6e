#include "platform/help/HelpPage.h"

#include "platform/help/HelpBook.h"

#include <QImage>
#include <QPagedPaintDevice>
#include <QScrollBar>
#include <QTextFrame>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace platform {

namespace {

const QString kScheme = QStringLiteral("help");
constexpr double kUsualType = 17; // units
constexpr double kStep = 1.12;
constexpr int kMargin = 18;
constexpr int kFrame = 6;
constexpr int kMostMarks = 2000;
constexpr int kNarrowestPicture = 120;

QUrl UrlOf(const QString &page)
{
    QUrl url;
    url.setScheme(kScheme);
    url.setPath('/' + page.section('#', 0, 0), QUrl::DecodedMode);
    if (page.contains('#'))
        url.setFragment(page.section('#', 1), QUrl::DecodedMode);
    return url;
}

QString NameOf(const QUrl &url)
{
    return url.path(QUrl::FullyDecoded).mid(1);
}

// A picture that cannot be had is nothing to be seen; for one that is null the library looks on the disk.
QImage PictureFrom(const QByteArray &bytes)
{
    QImage picture = QImage::fromData(bytes);
    if (picture.isNull()) {
        picture = QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
    }
    return picture;
}

} // namespace

HelpPage::HelpPage(QWidget *parent) : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("page"));
    setAccessibleName(tr("Page"));
    setFrameShape(QFrame::NoFrame);
    setOpenExternalLinks(false);
    document()->setDocumentMargin(kMargin);
    SetZoom(0);
}

void HelpPage::SetBook(const HelpBook *book)
{
    m_book = book;
    m_bookIsNew = true;
    m_pictures.clear();
}

void HelpPage::Open(const QString &page)
{
    const QUrl url = UrlOf(page);
    const bool readAgain = std::exchange(m_bookIsNew, false) && NameOf(url) == NameOf(source());
    if (readAgain) {
        setSource(url, QTextDocument::HtmlResource);
        reload();
        return;
    }
    // A place on the page that is open is gone to again, however far it was scrolled away from.
    if (url == source()) {
        if (url.hasFragment())
            scrollToAnchor(url.fragment(QUrl::FullyDecoded));
        else
            verticalScrollBar()->setValue(0);
        return;
    }
    setSource(url, QTextDocument::HtmlResource);
}

QString HelpPage::Opened() const
{
    const QString place = source().fragment(QUrl::FullyDecoded);
    return NameOf(source()) + (place.isEmpty() ? QString() : '#' + place);
}

void HelpPage::SetZoom(int step)
{
    m_zoom = std::clamp(step, kSmallest, kLargest);
    QFont type = font();
    type.setPixelSize(int(std::lround(kUsualType * std::pow(kStep, m_zoom))));
    setFont(type);
    document()->setDefaultFont(type);
    if (zoomed)
        zoomed();
}

int HelpPage::Mark(const QString &text)
{
    MarkAll(text.isEmpty() ? QStringList() : QStringList(text));
    return int(extraSelections().size());
}

void HelpPage::MarkWords(const QString &words)
{
    MarkAll(PatternsOf(words));
    QTextCursor first(document());
    first.movePosition(QTextCursor::End);
    for (const QTextEdit::ExtraSelection &mark : extraSelections())
        if (mark.cursor.selectionStart() < first.position())
            first.setPosition(mark.cursor.selectionStart());
    if (!extraSelections().isEmpty()) {
        setTextCursor(first);
        ensureCursorVisible();
    }
}

template <typename Needles>
void HelpPage::MarkAll(const Needles &needles)
{
    QList<QTextEdit::ExtraSelection> marks;
    for (const auto &needle : needles) {
        QTextCursor place(document());
        while (marks.size() < kMostMarks) {
            place = document()->find(needle, place);
            if (place.isNull())
                break;
            QTextEdit::ExtraSelection mark;
            mark.cursor = place;
            mark.format.setBackground(QColor(0xff, 0xd9, 0x6b));
            mark.format.setForeground(QColor(0x2a, 0x1b, 0x3d));
            marks << mark;
        }
    }
    setExtraSelections(marks);
}

bool HelpPage::FindNext(const QString &text, bool backwards)
{
    if (text.isEmpty())
        return false;
    const auto flags = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (find(text, flags))
        return true;
    const QTextCursor before = textCursor();
    moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    if (find(text, flags))
        return true;
    setTextCursor(before);
    return false;
}

void HelpPage::PrintTo(QPagedPaintDevice &paper) const
{
    const std::unique_ptr<QTextDocument> copy(document()->clone(document()));
    QTextFrameFormat plain = copy->rootFrame()->frameFormat();
    plain.clearBackground();
    copy->rootFrame()->setFrameFormat(plain);
    copy->print(&paper);
}

QVariant HelpPage::loadResource(int type, const QUrl &name)
{
    const QUrl url = source().resolved(name);
    const bool isOfBook = m_book && url.scheme() == kScheme;
    const auto bytes = [&] { return isOfBook ? m_book->Bytes(NameOf(url)) : QByteArray(); };
    switch (type) {
    case QTextDocument::HtmlResource:
        return isOfBook ? m_book->Page(NameOf(url)) : QString();
    case QTextDocument::StyleSheetResource:
        return QString::fromUtf8(bytes());
    case QTextDocument::ImageResource: {
        auto picture = m_pictures.find(name);
        if (picture == m_pictures.end())
            picture = m_pictures.emplace(name, PictureFrom(bytes())).first;
        return Fitted(picture->second);
    }
    default:
        return QByteArray();
    }
}

void HelpPage::doSetSource(const QUrl &url, QTextDocument::ResourceType type)
{
    const QUrl whole = source().resolved(url);
    if (whole.scheme() != kScheme)
        return;
    setExtraSelections({});
    QTextBrowser::doSetSource(whole, type);
}

// A picture never makes a page wider than its window. There is always room left for a scroll bar, for it
// comes and goes with the height of what is shown.
QImage HelpPage::Fitted(const QImage &picture) const
{
    const int edge = 2 * (kMargin + kFrame) + verticalScrollBar()->sizeHint().width();
    const int room = std::max(kNarrowestPicture, width() - edge);
    return picture.width() > room ? picture.scaledToWidth(room, Qt::SmoothTransformation) : picture;
}

void HelpPage::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    if (width() == m_fit)
        return;
    m_fit = width();
    for (const auto &[name, picture] : m_pictures)
        document()->addResource(QTextDocument::ImageResource, name, Fitted(picture));
    if (!m_pictures.empty())
        document()->markContentsDirty(0, document()->characterCount());
}

void HelpPage::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    if (event->angleDelta().y() != 0)
        SetZoom(m_zoom + (event->angleDelta().y() > 0 ? 1 : -1));
    event->accept();
}

} // namespace platform

#pragma once

#include <QTextBrowser>

#include <functional>
#include <map>

class QPagedPaintDevice;

namespace platform {

class HelpBook;

// Where a page is read. Everything it shows comes out of the book; links that lead elsewhere do nothing.
class HelpPage : public QTextBrowser {
    Q_OBJECT

public:
    explicit HelpPage(QWidget *parent = nullptr);

    // `book` has to stay until the next one is given.
    void SetBook(const HelpBook *book);
    // `page` may name a place on it behind a #.
    void Open(const QString &page);
    // The page that is shown, with the place that was asked for.
    QString Opened() const;

    // Larger or smaller type, in steps; 0 is the usual size.
    void SetZoom(int step);
    int Zoom() const { return m_zoom; }
    static constexpr int kSmallest = -3;
    static constexpr int kLargest = 8;

    // Marks every place where `text` stands, or unmarks all with an empty one; how many there are.
    int Mark(const QString &text);
    // Marks the words of a search and turns to the first of them.
    void MarkWords(const QString &words);
    // Goes to the next place, from the last on to the first; false when there is none.
    bool FindNext(const QString &text, bool backwards);

    // Black on white, as paper wants it.
    void PrintTo(QPagedPaintDevice &paper) const;

    std::function<void()> zoomed;

protected:
    QVariant loadResource(int type, const QUrl &name) override;
    void doSetSource(const QUrl &url, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    // Each needle is a text or a pattern.
    template <typename Needles>
    void MarkAll(const Needles &needles);
    QImage Fitted(const QImage &picture) const;

    const HelpBook *m_book = nullptr;
    std::map<QUrl, QImage> m_pictures; // those met so far, in full size
    bool m_bookIsNew = false;          // nothing of it has been read yet
    int m_fit = 0;                     // the width that they were fitted into
    int m_zoom = 0;
};

} // namespace platform

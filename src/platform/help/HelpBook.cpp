#include "platform/help/HelpBook.h"

#include <QFileInfo>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr qsizetype kExcerptBefore = 40;
constexpr qsizetype kExcerptLength = 130;
// A title tells more of what a page is about than anything in it.
constexpr qsizetype kTitleWeight = 50;

QString Notice(const QString &heading, const QString &text)
{
    return QStringLiteral("<html><head><title>%1</title></head><body><h1>%1</h1><p>%2</p></body></html>")
        .arg(heading, text);
}

// What is told instead of a page when there is no help file to take it from.
QString NoticeOf(ChmFault::Kind fault, const QString &path)
{
    const QFileInfo info(path);
    const QString file = QStringLiteral("<b>%1</b>").arg(info.fileName().toHtmlEscaped());
    const QString remedy =
        QStringLiteral("</p><p>You can play without it. Installing the game anew brings the help back.");
    switch (fault) {
    case ChmFault::kMissing:
        return Notice(
            QStringLiteral("The help is missing"),
            QStringLiteral("There is no file %1 in the folder %2.").arg(file, info.path().toHtmlEscaped()) +
                remedy);
    case ChmFault::kUnreadable:
        return Notice(QStringLiteral("The help cannot be read"),
                      QStringLiteral("The file %1 in the folder %2 cannot be opened.")
                              .arg(file, info.path().toHtmlEscaped()) +
                          remedy);
    default:
        return Notice(QStringLiteral("The help is damaged"),
                      QStringLiteral("The file %1 in the folder %2 is not whole, or is no help file.")
                              .arg(file, info.path().toHtmlEscaped()) +
                          remedy);
    }
}

// A page for its words alone. The library would look for style sheets where the program was started.
class WordsOnly final : public QTextDocument {
protected:
    QVariant loadResource(int, const QUrl &) override { return {}; }
};

QString Excerpt(const QString &text, qsizetype place)
{
    qsizetype start = std::max<qsizetype>(0, place - kExcerptBefore);
    while (start > 0 && start < place && !text[start - 1].isSpace())
        ++start;
    qsizetype end = std::min(text.size(), start + kExcerptLength);
    while (end < text.size() && end > place + 1 && !text[end].isSpace())
        --end;
    const QString excerpt = text.mid(start, end - start).simplified();
    return (start > 0 ? QStringLiteral("… ") : QString()) + excerpt +
           (end < text.size() ? QStringLiteral(" …") : QString());
}

} // namespace

std::vector<QRegularExpression> PatternsOf(const QString &words)
{
    static const QRegularExpression kBetweenWords(QStringLiteral("[^\\p{L}\\p{N}']+"));
    std::vector<QRegularExpression> patterns;
    for (const QString &word : words.split(kBetweenWords, Qt::SkipEmptyParts))
        patterns.emplace_back(QStringLiteral("(?<![\\p{L}\\p{N}])") + QRegularExpression::escape(word),
                              QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
    return patterns;
}

HelpBook::HelpBook(const QString &path) : m_path(path)
{
    try {
        m_file = std::make_unique<ChmFile>(path);
    } catch (const ChmFault &fault) {
        m_fault = fault.Reason();
        return;
    }
    // A file without contents or index still has its pages.
    const auto read = [this](const QString &name) {
        try {
            return ReadSiteMap(m_file->ReadText(name));
        } catch (const ChmFault &) {
            return std::vector<SiteMapLine>();
        }
    };
    m_contents = read(m_file->ContentsFile());
    m_index = read(m_file->IndexFile());
}

QString HelpBook::StartPage() const
{
    if (!m_file)
        return {};
    if (!m_file->StartPage().isEmpty() || m_file->Pages().isEmpty())
        return m_file->StartPage();
    return m_file->Pages().front();
}

QString HelpBook::Page(const QString &name) const
{
    if (!m_file)
        return NoticeOf(m_fault, m_path);
    try {
        const QString text = m_file->ReadText(name);
        return text.trimmed().isEmpty() ? QStringLiteral("<html></html>") : text;
    } catch (const ChmFault &fault) {
        if (fault.Reason() != ChmFault::kNoPage)
            return NoticeOf(fault.Reason(), m_path);
    }
    return Notice(QStringLiteral("This page is missing"),
                  QStringLiteral("The help has no page called <b>%1</b>. The contents show what there is.")
                      .arg(name.toHtmlEscaped()));
}

QByteArray HelpBook::Bytes(const QString &name) const
{
    if (!m_file)
        return {};
    try {
        return m_file->Read(name);
    } catch (const ChmFault &) {
        return {};
    }
}

std::vector<HelpHit> HelpBook::Search(const QString &words) const
{
    const std::vector<QRegularExpression> patterns = PatternsOf(words);
    if (patterns.empty())
        return {};
    std::vector<std::pair<qsizetype, HelpHit>> found;
    for (const PlainPage &page : PlainPages()) {
        qsizetype weight = 0;
        qsizetype first = page.text.size();
        for (const QRegularExpression &pattern : patterns) {
            const qsizetype inTitle = page.title.count(pattern);
            const qsizetype inText = page.text.count(pattern);
            if (inTitle + inText == 0) {
                weight = 0;
                break;
            }
            weight += inTitle * kTitleWeight + inText;
            if (inText > 0)
                first = std::min(first, page.text.indexOf(pattern));
        }
        if (weight > 0)
            found.emplace_back(weight, HelpHit{ page.page, page.title,
                                                Excerpt(page.text, first == page.text.size() ? 0 : first) });
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto &one, const auto &other) { return one.first > other.first; });
    std::vector<HelpHit> hits;
    hits.reserve(found.size());
    for (auto &[weight, hit] : found)
        hits.push_back(std::move(hit));
    return hits;
}

const std::vector<HelpBook::PlainPage> &HelpBook::PlainPages() const
{
    if (m_plainPages.empty() && m_file) {
        for (const QString &name : m_file->Pages()) {
            WordsOnly page;
            page.setHtml(Page(name));
            const QString title = page.metaInformation(QTextDocument::DocumentTitle);
            QString text = page.toPlainText();
            text.remove(QChar::ObjectReplacementCharacter);
            // The heading says no more than the title.
            if (!title.isEmpty() && text.trimmed().startsWith(title))
                text = text.trimmed().mid(title.size()).trimmed();
            m_plainPages.push_back({ name, title.isEmpty() ? name : title, text });
        }
    }
    return m_plainPages;
}

} // namespace platform

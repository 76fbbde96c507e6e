#include "platform/forms/Resizer.h"

#include "platform/forms/FileListBox.h"

#include <QAbstractItemView>
#include <QFontInfo>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QWidget>

#include <algorithm>

namespace platform {

namespace {

constexpr char kTypeProperty[] = "controlType";

// Whether controls of ours may stand in it; what other widgets are made of is their own affair.
bool IsContainer(const QWidget &control)
{
    if (qobject_cast<const QGroupBox *>(&control))
        return true;
    // A frame, but nothing made from one, such as a label or a list.
    return control.metaObject() == &QFrame::staticMetaObject ||
           control.metaObject() == &QWidget::staticMetaObject;
}

} // namespace

Resizer::Resizer(QWidget &window, Hook hook)
    : m_window(window), m_designSize(window.size()), m_hook(std::move(hook))
{
    window.ensurePolished(); // a style may bring the fonts
    Collect(window);
}

void Resizer::Collect(const QWidget &container)
{
    for (QObject *child : container.children()) {
        auto *control = qobject_cast<QWidget *>(child);
        if (!control || control->isWindow())
            continue;
        // Each gets its own size of type, so that scaling a frame does not change what stands in it behind
        // our back.
        QFont font = control->font();
        font.setPixelSize(QFontInfo(font).pixelSize());
        control->setFont(font);
        m_entries.push_back({ control, Present(*control) });
        if (IsContainer(*control))
            Collect(*control);
    }
}

void Resizer::Apply()
{
    if (m_designSize.isEmpty() || m_window.size().isEmpty())
        return;
    const double across = static_cast<double>(m_window.width()) / m_designSize.width();
    const double down = static_cast<double>(m_window.height()) / m_designSize.height();
    for (const Entry &entry : m_entries) {
        Planned planned{ entry.design.top * down, entry.design.left * across, entry.design.height * down,
                         entry.design.width * across, entry.design.fontSize * std::min(across, down) };
        if (m_hook)
            m_hook(TypeOf(*entry.control), planned, *entry.control);
        entry.control->setGeometry(qRound(planned.left), qRound(planned.top), qRound(planned.width),
                                   qRound(planned.height));
        QFont font = entry.control->font();
        const int size = std::max(1, qRound(planned.fontSize));
        if (font.pixelSize() != size) {
            font.setPixelSize(size);
            entry.control->setFont(font);
        }
    }
}

Resizer::Planned Resizer::Present(const QWidget &control)
{
    const QRect place = control.geometry();
    return { static_cast<double>(place.top()), static_cast<double>(place.left()),
             static_cast<double>(place.height()), static_cast<double>(place.width()),
             static_cast<double>(QFontInfo(control.font()).pixelSize()) };
}

QString Resizer::TypeOf(const QWidget &control)
{
    if (const QVariant given = control.property(kTypeProperty); given.isValid())
        return given.toString();
    if (qobject_cast<const QPushButton *>(&control))
        return QStringLiteral("CommandButton");
    if (qobject_cast<const QRadioButton *>(&control))
        return QStringLiteral("OptionButton");
    if (const auto *label = qobject_cast<const QLabel *>(&control))
        return label->pixmap(Qt::ReturnByValue).isNull() ? QStringLiteral("Label") : QStringLiteral("Image");
    if (qobject_cast<const QLineEdit *>(&control) || qobject_cast<const QPlainTextEdit *>(&control))
        return QStringLiteral("TextBox");
    if (qobject_cast<const QTextEdit *>(&control))
        return QStringLiteral("RichTextBox");
    if (qobject_cast<const QGroupBox *>(&control))
        return QStringLiteral("Frame");
    if (qobject_cast<const FileListBox *>(&control))
        return QStringLiteral("FileListBox");
    if (qobject_cast<const QAbstractItemView *>(&control))
        return QStringLiteral("ListView");
    if (const auto *frame = qobject_cast<const QFrame *>(&control);
        frame && frame->frameShape() != QFrame::NoFrame)
        return QStringLiteral("Shape");
    if (IsContainer(control))
        return QStringLiteral("Frame");
    return QString::fromLatin1(control.metaObject()->className());
}

} // namespace platform

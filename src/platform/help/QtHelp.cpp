#include "platform/help/QtHelp.h"

#include "platform/files/Files.h"

#include <QPlainTextEdit>

namespace platform {

QtHelp::QtHelp(const Files &files) : m_files(files) {}

QtHelp::~QtHelp()
{
    CloseAll();
}

void QtHelp::ShowTopic(const QString &file, const QString &topic)
{
    auto *window = new QPlainTextEdit;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(QStringLiteral("Tumblewick Help"));
    window->setReadOnly(true);
    const QString reason =
        m_files.FileExists(file) ? QStringLiteral("cannot be read") : QStringLiteral("is missing");
    window->setPlainText(
        QStringLiteral("The topic “%1” cannot be shown: the help file %2.").arg(topic, reason));
    window->resize(560, 180);
    window->show();
    m_windows.emplace_back(window);
}

void QtHelp::CloseAll()
{
    for (const QPointer<QWidget> &window : m_windows) {
        if (window)
            window->close();
    }
    m_windows.clear();
}

} // namespace platform

#include "platform/forms/FolderList.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Drives.h"
#include "platform/files/Files.h"
#include "platform/forms/CutText.h"
#include "platform/forms/SelectionKeys.h"

#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

constexpr int kPathRole = Qt::UserRole;

QString Within(const QString &folder, const QString &name)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

bool Holds(const QString &folder, const QString &path)
{
    return path == folder || path.startsWith(Within(folder, QString()));
}

// The drive that the path lies on.
Drive DriveOf(const QString &path)
{
    Drive best{ QStringLiteral("/"), QStringLiteral("Computer"), Drive::Kind::Fixed };
    for (const Drive &drive : The().drives.All())
        if (Holds(drive.path, path) && drive.path.size() >= best.path.size())
            best = drive;
    return best;
}

} // namespace

FolderList::FolderList(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    CutLongTexts(*this);
}

void FolderList::SetPath(const QString &path)
{
    Files &files = The().files;
    The().drives.CheckReady(path);
    QString real = files.Resolve(path);
    while (real.size() > 1 && (real.endsWith(QLatin1Char('/')) || real.endsWith(QLatin1Char('\\'))))
        real.chop(1);
    List(real, files.FolderNames(real));
    const bool isOther = real != m_path;
    m_path = real;
    if (isOther)
        emit Changed();
}

void FolderList::List(const QString &path, const QStringList &folders)
{
    const Drive drive = DriveOf(path);
    const QIcon open(QStringLiteral(":/places/folder-open.svg"));
    const QIcon closed(QStringLiteral(":/places/folder.svg"));
    int depth = 0;
    const auto add = [&](const QString &name, const QString &where, const QIcon &picture) {
        auto *item = new QListWidgetItem(picture, name, this);
        item->setData(kPathRole, where);
        item->setData(kDepthRole, depth);
    };
    clear();
    add(drive.name, drive.path, open);
    QString way = drive.path;
    for (const QString &name : path.mid(drive.path.size()).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        ++depth;
        way = Within(way, name);
        add(name, way, open);
    }
    m_openRow = count() - 1;
    QFont strong = font();
    strong.setBold(true);
    item(m_openRow)->setFont(strong);
    ++depth;
    for (const QString &name : folders)
        add(name, Within(path, name), closed);
    setCurrentRow(m_openRow);
    // Of a long way down its end is seen, and as much as possible of what lies below.
    scrollToItem(item(std::max(0, m_openRow - 1)), QAbstractItemView::PositionAtTop);
}

void FolderList::Open(QListWidgetItem &folder)
{
    const QString path = folder.data(kPathRole).toString();
    try {
        SetPath(path);
    } catch (const Error &error) {
        const bool isThere = error.Number() == kPathFileAccess;
        if (isThere) {
            folder.setFlags(Qt::NoItemFlags);
            folder.setToolTip(QStringLiteral("This folder cannot be opened."));
        } else if (row(&folder) > m_openRow) {
            delete &folder;
        }
        setCurrentRow(m_openRow);
    }
}

void FolderList::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Right:
        if (currentItem())
            Open(*currentItem());
        return;
    case Qt::Key_Backspace:
    case Qt::Key_Left:
        if (m_openRow > 0)
            Open(*item(m_openRow - 1));
        return;
    default:
        QListWidget::keyPressEvent(event);
    }
}

void FolderList::mouseReleaseEvent(QMouseEvent *event)
{
    QListWidget::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || std::exchange(m_isDoubleClick, false))
        return;
    QListWidgetItem *const folder = itemAt(event->position().toPoint());
    if (folder && folder->flags() != Qt::NoItemFlags)
        Open(*folder);
}

// The first click has opened a folder, and what lies under the mouse now was not meant.
void FolderList::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_isDoubleClick = event->button() == Qt::LeftButton;
}

// Left alone, the list marks the folder that is open, not one that was only passed by key.
void FolderList::focusOutEvent(QFocusEvent *event)
{
    QListWidget::focusOutEvent(event);
    if (m_openRow >= 0 && event->reason() != Qt::PopupFocusReason)
        setCurrentRow(m_openRow);
}

QItemSelectionModel::SelectionFlags FolderList::selectionCommand(const QModelIndex &index,
                                                                 const QEvent *event) const
{
    return KeptSelection(index, QListWidget::selectionCommand(index, event));
}

} // namespace platform

#include "platform/forms/DriveList.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/files/Drives.h"

#include <QIcon>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QWheelEvent>

namespace platform {

namespace {

QIcon PictureOf(Drive::Kind kind)
{
    switch (kind) {
    case Drive::Kind::Home:
        return QIcon(QStringLiteral(":/places/home.svg"));
    case Drive::Kind::Removable:
        return QIcon(QStringLiteral(":/places/removable.svg"));
    case Drive::Kind::Network:
        return QIcon(QStringLiteral(":/places/network.svg"));
    case Drive::Kind::Fixed:
        break;
    }
    return QIcon(QStringLiteral(":/places/computer.svg"));
}

} // namespace

DriveList::DriveList(QWidget *parent) : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMaxVisibleItems(12);
    // The popup is drawn as a list, by the style sheet, not as a menu.
    setItemDelegate(new QStyledItemDelegate(this));
    connect(this, &QComboBox::activated, this, [this] { emit Changed(); });
}

QString DriveList::Drive() const
{
    return currentData().toString();
}

void DriveList::SetDrive(const QString &path)
{
    if (path == Drive() && !path.isEmpty())
        return;
    Fill();
    const int place = findData(path);
    if (place < 0)
        throw Error(kDeviceUnavailable);
    setCurrentIndex(place);
    emit Changed();
}

void DriveList::showPopup()
{
    Fill();
    QComboBox::showPopup();
}

void DriveList::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

// What has been mounted since is offered, what has gone is not, except for the drive that is shown.
void DriveList::Fill()
{
    const QString shown = Drive();
    const QString name = currentText();
    const QIcon picture = itemIcon(currentIndex());
    const QSignalBlocker quiet(this);
    clear();
    for (const platform::Drive &drive : The().drives.All()) {
        addItem(PictureOf(drive.kind), drive.name, drive.path);
        setItemData(count() - 1, drive.path, Qt::ToolTipRole);
    }
    int place = findData(shown);
    if (place < 0 && !shown.isEmpty()) {
        addItem(picture, name, shown);
        place = count() - 1;
    }
    setCurrentIndex(place);
}

} // namespace platform

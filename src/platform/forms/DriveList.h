#pragma once

#include <QComboBox>

namespace platform {

// Shows one of the drives and offers the others. Nothing is shown at first.
class DriveList : public QComboBox {
    Q_OBJECT

public:
    explicit DriveList(QWidget *parent = nullptr);

    // The path of the drive that is shown, empty when none is.
    QString Drive() const;
    // Shows another drive and emits Changed; the same one changes nothing. Raises 68 when there is no such
    // drive. Whether it can be read is not looked at.
    void SetDrive(const QString &path);

    void showPopup() override;

signals:
    // Another drive is shown, or the user has chosen the same one once more.
    void Changed();

protected:
    // Turned by accident, the wheel would take the user to another drive.
    void wheelEvent(QWheelEvent *event) override;

private:
    void Fill();
};

} // namespace platform

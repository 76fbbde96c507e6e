#pragma once

#include <QSize>
#include <QString>

#include <functional>
#include <vector>

class QWidget;

namespace platform {

// The ReSize1 control: scales the controls of a window from the size it was designed for to the size it has.
// Frames scale with what stands in them; fonts scale with the smaller of the two factors.
class Resizer {
public:
    // What the resizer is about to give a control, in units of its container.
    struct Planned {
        double top, left, height, width;
        double fontSize; // pixels
    };
    // Called for each control before it is changed; whatever it writes into the plan is used. `type` is one
    // of CommandButton, Label, TextBox, RichTextBox, Frame, ListView, FileListBox, OptionButton, Image,
    // Shape; for what is none of these the class name; and always what the dynamic property "controlType"
    // says, where there is one.
    using Hook = std::function<void(const QString &type, Planned &planned, QWidget &control)>;

    // Takes the present geometry of all controls of `window`, down into frames, as the design. The window has
    // to outlive the resizer.
    explicit Resizer(QWidget &window, Hook hook = {});

    // Scales to the window's present size.
    void Apply();

    // The present figures of a control, as the hook would write them to hold it.
    static Planned Present(const QWidget &control);
    static QString TypeOf(const QWidget &control);

private:
    struct Entry {
        QWidget *control;
        Planned design;
    };
    void Collect(const QWidget &container);

    QWidget &m_window;
    QSize m_designSize;
    Hook m_hook;
    std::vector<Entry> m_entries;
};

} // namespace platform

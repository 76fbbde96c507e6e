#pragma once

#include "platform/forms/Boxes.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

namespace support {

// Boxes that answer themselves. A test says ahead which boxes come and what is answered. A box that was not
// expected, or with another text, fails the test and is answered as if closed from its frame; so do expected
// boxes that never came, at AllAnswered or at the latest when the fake goes.
class FakeBoxes : public platform::Boxes {
public:
    // `fail` is told each problem; without it the running test fails.
    explicit FakeBoxes(std::function<void(const QString &problem)> fail = {});
    ~FakeBoxes() override;

    // One message box with this text. `whileOpen` is called while it is open.
    void Expect(const QString &text, platform::BoxAnswer answer = platform::BoxAnswer::Ok,
                std::function<void()> whileOpen = {});
    // One input box with this prompt; `typed` is what it gives, empty for cancelled.
    void ExpectInput(const QString &prompt, const QString &typed);
    // One message box of any text.
    void ExpectAny(platform::BoxAnswer answer = platform::BoxAnswer::Ok);

    struct Shown {
        QString text;
        QString title; // as given, so null for the application's title
        bool isInput = false;
        platform::BoxButtons buttons = platform::BoxButtons::Ok;

        bool HasProgramTitle() const { return title.isNull(); }
        // Not even the application's.
        bool HasNoTitle() const { return title.isEmpty() && !title.isNull(); }
    };
    // What was told of work that takes its time, in order. It is done at once.
    const QStringList &Busy() const { return m_busy; }

    // All boxes that were shown, in order.
    const std::vector<Shown> &All() const { return m_shown; }
    QStringList Texts() const;
    // The text of the last box, empty when there was none.
    QString LastText() const;

    // Whether every expected box has come; fails the test if not.
    bool AllAnswered();

    platform::BoxAnswer MessageBox(const QString &text, platform::BoxButtons buttons,
                                   const QString &title) override;
    QString InputBox(const QString &prompt) override;
    void WhileBusy(const QString &text, const std::function<void()> &work) override;

private:
    struct Expected {
        bool isInput = false;
        bool anyText = false;
        QString text;
        platform::BoxAnswer answer = platform::BoxAnswer::Ok;
        QString typed;
        std::function<void()> whileOpen;
    };
    bool Matches(const QString &text, bool isInput);

    std::function<void(const QString &)> m_fail;
    std::deque<Expected> m_expected;
    std::vector<Shown> m_shown;
    QStringList m_busy;
};

} // namespace support

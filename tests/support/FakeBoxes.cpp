#include "support/FakeBoxes.h"

#include <QTest>

namespace support {

using platform::BoxAnswer;
using platform::BoxButtons;

namespace {

BoxAnswer ClosedFromTheFrame(BoxButtons buttons)
{
    switch (buttons) {
    case BoxButtons::Ok:
        return BoxAnswer::Ok;
    case BoxButtons::YesNo:
        return BoxAnswer::No;
    case BoxButtons::YesNoCancel:
        return BoxAnswer::Cancel;
    }
    return BoxAnswer::Cancel;
}

bool IsAButton(BoxAnswer answer, BoxButtons buttons)
{
    switch (answer) {
    case BoxAnswer::Ok:
        return buttons == BoxButtons::Ok;
    case BoxAnswer::Yes:
    case BoxAnswer::No:
        return buttons != BoxButtons::Ok;
    case BoxAnswer::Cancel:
        return buttons == BoxButtons::YesNoCancel;
    }
    return false;
}

} // namespace

FakeBoxes::FakeBoxes(std::function<void(const QString &)> fail) : m_fail(std::move(fail))
{
    if (!m_fail)
        m_fail = [](const QString &problem) { QTest::qFail(qPrintable(problem), __FILE__, __LINE__); };
}

FakeBoxes::~FakeBoxes()
{
    AllAnswered();
}

void FakeBoxes::Expect(const QString &text, BoxAnswer answer, std::function<void()> whileOpen)
{
    m_expected.push_back({ false, false, text, answer, {}, std::move(whileOpen) });
}

void FakeBoxes::ExpectInput(const QString &prompt, const QString &typed)
{
    m_expected.push_back({ true, false, prompt, BoxAnswer::Ok, typed, {} });
}

void FakeBoxes::ExpectAny(BoxAnswer answer)
{
    m_expected.push_back({ false, true, {}, answer, {}, {} });
}

QStringList FakeBoxes::Texts() const
{
    QStringList texts;
    for (const Shown &box : m_shown)
        texts << box.text;
    return texts;
}

QString FakeBoxes::LastText() const
{
    return m_shown.empty() ? QString() : m_shown.back().text;
}

bool FakeBoxes::AllAnswered()
{
    const bool all = m_expected.empty();
    for (const Expected &expected : m_expected)
        m_fail(QStringLiteral("An expected box never came: \"%1\"").arg(expected.text));
    m_expected.clear();
    return all;
}

bool FakeBoxes::Matches(const QString &text, bool isInput)
{
    if (m_expected.empty()) {
        m_fail(QStringLiteral("An unexpected box came: \"%1\"").arg(text));
        return false;
    }
    const Expected &expected = m_expected.front();
    if (expected.isInput != isInput || (!expected.anyText && expected.text != text)) {
        m_fail(QStringLiteral("The box \"%1\" came where \"%2\" was expected").arg(text, expected.text));
        return false;
    }
    return true;
}

BoxAnswer FakeBoxes::MessageBox(const QString &text, BoxButtons buttons, const QString &title)
{
    m_shown.push_back({ text, title, false, buttons });
    if (!Matches(text, false))
        return ClosedFromTheFrame(buttons);
    const Expected expected = std::move(m_expected.front());
    m_expected.pop_front();
    if (!IsAButton(expected.answer, buttons)) {
        m_fail(QStringLiteral("The box \"%1\" has no button for the answer that was expected").arg(text));
        return ClosedFromTheFrame(buttons);
    }
    if (expected.whileOpen)
        expected.whileOpen();
    return expected.answer;
}

QString FakeBoxes::InputBox(const QString &prompt)
{
    m_shown.push_back({ prompt, QString(), true, BoxButtons::Ok });
    if (!Matches(prompt, true))
        return QString();
    const Expected expected = std::move(m_expected.front());
    m_expected.pop_front();
    return expected.typed;
}

void FakeBoxes::WhileBusy(const QString &text, const std::function<void()> &work)
{
    m_busy << text;
    work();
}

} // namespace support

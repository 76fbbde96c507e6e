#include "platform/agent/DescriptionNode.h"

#include "platform/agent/CharacterReader.h"

#include <algorithm>

namespace platform {

namespace {

constexpr qsizetype kMostNameLetters = 64;
constexpr qsizetype kLeastMembersAllowed = 64;

} // namespace

DescriptionNode::DescriptionNode(QString file, QString key, QCborValue value)
    : m_file(std::move(file)), m_key(std::move(key)), m_value(std::move(value))
{
}

void DescriptionNode::Fail(const QString &problem) const
{
    throw CharacterFault{ m_file, m_key, problem };
}

void DescriptionNode::Require(bool good, const QString &problem) const
{
    if (!good)
        Fail(problem);
}

QString DescriptionNode::String() const
{
    Require(m_value.isString(), QStringLiteral("is not a text"));
    const QString text = m_value.toString();
    Require(text.size() <= kMostNameLetters, QStringLiteral("is too long"));
    return text;
}

bool DescriptionNode::Bool() const
{
    Require(m_value.isBool(), QStringLiteral("is neither true nor false"));
    return m_value.toBool();
}

double DescriptionNode::Number(double least, double most) const
{
    Require(m_value.isInteger() || m_value.isDouble(), QStringLiteral("is not a number"));
    const double number = m_value.toDouble();
    // Written so that what is not a number fails too.
    Require(number >= least && number <= most,
            QStringLiteral("is not between %1 and %2").arg(least).arg(most));
    return number;
}

QPointF DescriptionNode::Point() const
{
    Array(2, 2);
    return QPointF(Entry(0).Number(), Entry(1).Number());
}

QCborArray DescriptionNode::Array(qsizetype least, qsizetype most) const
{
    Require(m_value.isArray(), QStringLiteral("is not a list"));
    const QCborArray array = m_value.toArray();
    Require(array.size() >= least && array.size() <= most,
            least == most ? QStringLiteral("does not have %1 entries").arg(least)
                          : QStringLiteral("does not have %1 to %2 entries").arg(least).arg(most));
    return array;
}

QCborMap DescriptionNode::Map() const
{
    Require(m_value.isMap(), QStringLiteral("is not an object"));
    return m_value.toMap();
}

DescriptionNode DescriptionNode::Entry(qsizetype index) const
{
    return DescriptionNode(m_file, m_key + QStringLiteral("[%1]").arg(index), m_value.toArray().at(index));
}

DescriptionNode DescriptionNode::Member(const QString &name) const
{
    return DescriptionNode(m_file, m_key.isEmpty() ? name : m_key + QLatin1Char('.') + name,
                           Map().value(name));
}

DescriptionNode DescriptionNode::Needed(const QString &name) const
{
    const DescriptionNode member = Member(name);
    if (member.IsMissing())
        member.Fail(QStringLiteral("is missing"));
    return member;
}

QStringList DescriptionNode::Names(qsizetype most) const
{
    const QCborMap map = Map();
    QStringList names;
    for (const auto &[key, value] : map) {
        Q_UNUSED(value);
        const QCborValue name = key;
        Require(name.isString() && name.toString().size() <= kMostNameLetters,
                QStringLiteral("has a member without a proper name"));
        names << name.toString();
        Require(names.size() <= std::max(most, kLeastMembersAllowed), QStringLiteral("has too many members"));
    }
    return names;
}

void DescriptionNode::AllowOnly(const QStringList &names) const
{
    for (const QString &name : Names(names.size() + 1)) {
        if (!names.contains(name))
            Member(name).Fail(QStringLiteral("is not known here"));
    }
}

} // namespace platform

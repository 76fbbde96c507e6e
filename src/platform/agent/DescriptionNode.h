#pragma once

#include <QCborArray>
#include <QCborMap>
#include <QPointF>
#include <QString>
#include <QStringList>

namespace platform {

// A value of a character's description together with its place, which every fault names. Whatever is not of
// the kind that a member asks for throws CharacterFault. A value; for any thread.
class DescriptionNode {
public:
    // `file` and `key` say where the value stands; `key` is empty for the whole of a file.
    DescriptionNode(QString file, QString key, QCborValue value);

    [[noreturn]] void Fail(const QString &problem) const;
    void Require(bool good, const QString &problem) const;

    bool IsMissing() const { return m_value.isUndefined(); }

    QString String() const; // of bounded length
    bool Bool() const;
    double Number(double least = -kLargestNumber, double most = kLargestNumber) const;
    QPointF Point() const;                                   // from a list of two numbers
    QCborArray Array(qsizetype least, qsizetype most) const; // by its count of entries
    QCborMap Map() const;

    DescriptionNode Entry(qsizetype index) const;      // of a list
    DescriptionNode Member(const QString &name) const; // of an object, missing if there is none
    DescriptionNode Needed(const QString &name) const; // which has to be there
    // The names of an object's members, in their order.
    QStringList Names(qsizetype most) const;
    // Refuses members that nobody reads, which are misspelt ones.
    void AllowOnly(const QStringList &names) const;

private:
    static constexpr double kLargestNumber = 10000;

    QString m_file;
    QString m_key;
    QCborValue m_value;
};

} // namespace platform

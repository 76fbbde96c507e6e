#pragma once

#include "platform/files/ApplicationFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace support {

// A small program as it is installed for every user, and the home of one of them, where nothing is yet. For
// tests to derive from.
class InstalledFolder {
protected:
    // All of it anew.
    void Install()
    {
        m_work = std::make_unique<QTemporaryDir>();
        m_beside = m_work->filePath("lib/tumblewick");
        m_home = m_work->filePath("home/share");
        m_users = m_home + "/Tumblewick";
        Write(m_beside + "/Lists/Animals", "cat\r\n");
        Write(m_beside + "/Lists/Colours", "red\r\n");
        Write(m_beside + "/QList/Numbers", "1?_1_2_3_4_1_\r\n");
        Write(m_beside + "/Set", "Intro\r\n\r\n");
        Write(m_beside + "/Lintro", "0\r\n");
        Write(m_beside + "/characters/Merlin.acs", "Merlin");
        Write(m_beside + "/fireworks.mpg", "boom");
        Write(m_beside + "/tumblewick", "the program");
        Write(m_beside + "/ForEveryUser", "");
    }

    static void Write(const QString &path, const QByteArray &text)
    {
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), qint64(text.size()));
    }

    // Where the program works.
    QString Ask() const { return platform::ApplicationFolder(m_beside + "/tumblewick", m_home); }

    std::unique_ptr<QTemporaryDir> m_work;
    QString m_beside;
    QString m_home;
    QString m_users;
};

} // namespace support

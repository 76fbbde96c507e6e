#pragma once

#include "platform/files/Files.h"

#include <memory>

namespace support {

// Any files, with faults on demand: a named operation raises a number instead of doing its work.
class FaultyFiles : public platform::Files {
public:
    enum class Operation {
        FileNames,
        FolderNames,
        OpenForReading,
        OpenForWriting,
        ReadLine,
        Write,
        Close,
        Kill,
        FileCopy
    };

    // `files` has to outlive this.
    explicit FaultyFiles(platform::Files &files);
    ~FaultyFiles() override;

    // Lets the next `times` calls of `operation` fail with `number`, after `after` more that succeed. Write
    // stands for Write and WriteLine. A later call for the same operation replaces this.
    void Fail(Operation operation, qint32 number, int times = 1, int after = 0);
    // Takes all faults away.
    void Heal();
    // How many calls have failed on demand.
    int Failed() const;

    bool FileExists(const QString &path) const override;
    bool FolderExists(const QString &path) const override;
    QString Resolve(const QString &path) const override;
    QStringList FileNames(const QString &folder) const override;
    QStringList FolderNames(const QString &folder) const override;
    std::unique_ptr<platform::TextReader> OpenForReading(const QString &path) override;
    std::unique_ptr<platform::TextWriter> OpenForWriting(const QString &path, platform::FileWriting how,
                                                         bool create) override;
    void Kill(const QString &path) override;
    void FileCopy(const QString &from, const QString &to) override;

private:
    struct Faults; // shared with the streams, which may outlive a test's interest in this
    class Reader;
    class Writer;

    platform::Files &m_files;
    std::shared_ptr<Faults> m_faults;
};

} // namespace support

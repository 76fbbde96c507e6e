#include "support/FaultyFiles.h"

#include "platform/Error.h"

#include <map>

namespace support {

using platform::FileWriting;
using platform::TextReader;
using platform::TextWriter;

struct FaultyFiles::Faults {
    struct Fault {
        qint32 number;
        int times;
        int after;
    };
    std::map<Operation, Fault> due;
    int failed = 0;

    void Check(Operation operation)
    {
        const auto found = due.find(operation);
        if (found == due.end())
            return;
        Fault &fault = found->second;
        if (fault.after > 0) {
            --fault.after;
            return;
        }
        const qint32 number = fault.number;
        if (--fault.times <= 0)
            due.erase(found);
        ++failed;
        throw platform::Error(number);
    }
};

class FaultyFiles::Reader : public TextReader {
public:
    Reader(std::unique_ptr<TextReader> reader, std::shared_ptr<Faults> faults)
        : m_reader(std::move(reader)), m_faults(std::move(faults))
    {
    }
    bool AtEnd() const override { return m_reader->AtEnd(); }
    QString ReadLine() override
    {
        m_faults->Check(Operation::ReadLine);
        return m_reader->ReadLine();
    }

private:
    std::unique_ptr<TextReader> m_reader;
    std::shared_ptr<Faults> m_faults;
};

class FaultyFiles::Writer : public TextWriter {
public:
    Writer(std::unique_ptr<TextWriter> writer, std::shared_ptr<Faults> faults)
        : m_writer(std::move(writer)), m_faults(std::move(faults))
    {
    }
    void WriteLine(const QString &line) override
    {
        m_faults->Check(Operation::Write);
        m_writer->WriteLine(line);
    }
    void Write(const QString &text) override
    {
        m_faults->Check(Operation::Write);
        m_writer->Write(text);
    }
    void Close() override
    {
        m_faults->Check(Operation::Close);
        m_writer->Close();
    }

private:
    std::unique_ptr<TextWriter> m_writer;
    std::shared_ptr<Faults> m_faults;
};

FaultyFiles::FaultyFiles(platform::Files &files) : m_files(files), m_faults(std::make_shared<Faults>()) {}
FaultyFiles::~FaultyFiles() = default;

void FaultyFiles::Fail(Operation operation, qint32 number, int times, int after)
{
    m_faults->due.insert_or_assign(operation, Faults::Fault{ number, times, after });
}

void FaultyFiles::Heal()
{
    m_faults->due.clear();
}

int FaultyFiles::Failed() const
{
    return m_faults->failed;
}

bool FaultyFiles::FileExists(const QString &path) const
{
    return m_files.FileExists(path);
}

bool FaultyFiles::FolderExists(const QString &path) const
{
    return m_files.FolderExists(path);
}

QString FaultyFiles::Resolve(const QString &path) const
{
    return m_files.Resolve(path);
}

QStringList FaultyFiles::FileNames(const QString &folder) const
{
    m_faults->Check(Operation::FileNames);
    return m_files.FileNames(folder);
}

QStringList FaultyFiles::FolderNames(const QString &folder) const
{
    m_faults->Check(Operation::FolderNames);
    return m_files.FolderNames(folder);
}

std::unique_ptr<TextReader> FaultyFiles::OpenForReading(const QString &path)
{
    m_faults->Check(Operation::OpenForReading);
    return std::make_unique<Reader>(m_files.OpenForReading(path), m_faults);
}

std::unique_ptr<TextWriter> FaultyFiles::OpenForWriting(const QString &path, FileWriting how, bool create)
{
    m_faults->Check(Operation::OpenForWriting);
    return std::make_unique<Writer>(m_files.OpenForWriting(path, how, create), m_faults);
}

void FaultyFiles::Kill(const QString &path)
{
    m_faults->Check(Operation::Kill);
    m_files.Kill(path);
}

void FaultyFiles::FileCopy(const QString &from, const QString &to)
{
    m_faults->Check(Operation::FileCopy);
    m_files.FileCopy(from, to);
}

} // namespace support

#include "lists/KeptFile.h"

namespace tumblewick {

using platform::FileWriting;

KeptFile::KeptFile(platform::Files &files, const QString &path) : m_files(files), m_path(path)
{
    if (!files.FileExists(path))
        throw platform::Error(platform::kFileNotFound);
}

std::unique_ptr<platform::TextReader> KeptFile::OpenForReading() const
{
    return m_files.OpenForReading(m_path);
}

std::unique_ptr<platform::TextWriter> KeptFile::OpenForWriting() const
{
    return m_files.OpenForWriting(m_path, FileWriting::Replace, false);
}

std::unique_ptr<platform::TextWriter> KeptFile::OpenForAppending() const
{
    return m_files.OpenForWriting(m_path, FileWriting::Append, false);
}

} // namespace tumblewick

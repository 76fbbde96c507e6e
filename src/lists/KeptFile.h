#pragma once

#include "platform/Reference.h"
#include "platform/files/Files.h"

#include <memory>

namespace tumblewick {

// The file of a list that is being edited, kept from the read for all later writes. It is held by its path
// alone: when somebody takes it away meanwhile, the next call raises 53 and does not make it anew.
class KeptFile {
public:
    // Raises 53 when there is no such file.
    KeptFile(platform::Files &files, const QString &path);

    // Raise what platform::Files raises for an opening.
    std::unique_ptr<platform::TextReader> OpenForReading() const;
    std::unique_ptr<platform::TextWriter> OpenForWriting() const; // empties the file
    std::unique_ptr<platform::TextWriter> OpenForAppending() const;

private:
    platform::Files &m_files;
    QString m_path;
};
using KeptFileReference = platform::Reference<KeptFile>;

} // namespace tumblewick

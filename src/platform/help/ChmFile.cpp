#include "platform/help/ChmFile.h"

#include "platform/files/TextCode.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <chm_lib.h>

namespace platform {

namespace {

// The entries of the system file that are read.
enum SystemCode { kContents = 0, kIndex = 1, kStart = 2 };

QString KeyOf(QString name)
{
    while (name.startsWith('/'))
        name.remove(0, 1);
    return name.toLower();
}

} // namespace

void ChmFile::Closer::operator()(void *handle) const
{
    chm_close(static_cast<chmFile *>(handle));
}

ChmFile::ChmFile(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw ChmFault(ChmFault::kMissing);
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        throw ChmFault(ChmFault::kUnreadable);
    for (ChmEntry &entry : ReadChmDirectory(file)) {
        const QString key = KeyOf(QString::fromUtf8(entry.name));
        if (entry.name.startsWith('/') && !key.isEmpty())
            m_entries.emplace(key, std::move(entry));
    }
    m_handle.reset(chm_open(QFile::encodeName(path).constData()));
    if (!m_handle)
        throw ChmFault(ChmFault::kDamaged);
    ReadSystemFile();
}

ChmFile::~ChmFile() = default;

bool ChmFile::Has(const QString &name) const
{
    return m_entries.find(KeyOf(name)) != m_entries.end();
}

QByteArray ChmFile::Read(const QString &name) const
{
    const auto found = m_entries.find(KeyOf(name));
    if (found == m_entries.end() || found->second.name.endsWith('/'))
        throw ChmFault(ChmFault::kNoPage);
    auto *handle = static_cast<chmFile *>(m_handle.get());
    chmUnitInfo unit = {};
    if (chm_resolve_object(handle, found->second.name.constData(), &unit) != CHM_RESOLVE_SUCCESS ||
        unit.length != found->second.length || unit.space != CHM_UNCOMPRESSED)
        throw ChmFault(ChmFault::kDamaged);
    QByteArray bytes(qsizetype(unit.length), Qt::Uninitialized);
    if (!bytes.isEmpty() &&
        chm_retrieve_object(handle, &unit, reinterpret_cast<unsigned char *>(bytes.data()), 0,
                            LONGINT64(bytes.size())) != LONGINT64(bytes.size()))
        throw ChmFault(ChmFault::kDamaged);
    return bytes;
}

QString ChmFile::ReadText(const QString &name) const
{
    return DecodedLine(Read(name));
}

QStringList ChmFile::Pages() const
{
    QStringList pages;
    for (const auto &[key, entry] : m_entries)
        if (key.endsWith(QLatin1String(".htm")) || key.endsWith(QLatin1String(".html")))
            pages << QString::fromUtf8(entry.name.mid(1));
    return pages;
}

void ChmFile::ReadSystemFile()
{
    const QString name = QStringLiteral("#SYSTEM");
    if (!Has(name))
        return;
    const QByteArray bytes = Read(name);
    for (qsizetype place = 4; place + 4 <= bytes.size();) {
        const auto code = qFromLittleEndian<quint16>(bytes.constData() + place);
        const auto length = qFromLittleEndian<quint16>(bytes.constData() + place + 2);
        const QByteArray data = bytes.mid(place + 4, length);
        const QString text = QString::fromUtf8(data.left(data.indexOf('\0')));
        switch (code) {
        case kContents:
            m_contentsFile = text;
            break;
        case kIndex:
            m_indexFile = text;
            break;
        case kStart:
            m_startPage = text;
            break;
        default:
            break;
        }
        place += 4 + length;
    }
}

} // namespace platform

#pragma once

#include <QLoggingCategory>
#include <QStringList>
#include <QtGlobal>

namespace support {

// Keeps what is logged in one category as long as it lives; nothing is written meanwhile. One at a time.
class KeptLog {
public:
    enum class Of { Warnings, Traces }; // traces are off unless somebody wants them

    explicit KeptLog(const char *category, Of what = Of::Warnings)
        : m_category(category), m_former(qInstallMessageHandler(&KeptLog::Take))
    {
        Q_ASSERT(!s_kept);
        s_kept = this;
        if (what == Of::Traces)
            QLoggingCategory::setFilterRules(QLatin1String(category) + QStringLiteral(".debug=true"));
    }
    ~KeptLog()
    {
        QLoggingCategory::setFilterRules(QString());
        qInstallMessageHandler(m_former);
        s_kept = nullptr;
    }
    KeptLog(const KeptLog &) = delete;
    KeptLog &operator=(const KeptLog &) = delete;

    QStringList lines;

private:
    static void Take(QtMsgType, const QMessageLogContext &context, const QString &text)
    {
        if (s_kept->m_category == QLatin1String(context.category))
            s_kept->lines << text;
    }

    inline static KeptLog *s_kept = nullptr;
    const QLatin1String m_category;
    const QtMessageHandler m_former;
};

} // namespace support

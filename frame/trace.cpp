#include "frame/trace.h"

#include <cstdio>

ErrorHandler::ErrorHandler() = default;
ErrorHandler::~ErrorHandler() = default;

ErrorHandler *ErrorHandler::Instance()
{
    static ErrorHandler handler;
    return &handler;
}

void ErrorHandler::SetTraceMask(unsigned mask)
{
    m_mask = mask;
}

unsigned ErrorHandler::GetTraceMask() const
{
    return m_mask;
}

void ErrorHandler::SetTraceSink(TraceSink sink)
{
    m_sink = std::move(sink);
}

void ErrorHandler::Trace(const QString &file, const QString &text, unsigned short line) const
{
    if (m_sink) {
        m_sink(file, text, line);
        return;
    }
    const QByteArray out = QStringLiteral("%1(%2): %3\n").arg(file).arg(line).arg(text).toUtf8();
    std::fwrite(out.constData(), 1, size_t(out.size()), stderr);
}

void _Q_Trace(const QString &file, const QString &text, unsigned short line)
{
    ErrorHandler::Instance()->Trace(file, text, line);
}

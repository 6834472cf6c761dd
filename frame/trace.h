#ifndef TESSALINE_TRACE_H
#define TESSALINE_TRACE_H

#include "frame/morvane_global.h"

#include <QtCore/QString>

#include <functional>

// The process-wide trace handler. Callers ask GetTraceMask() before they
// trace; a line reaches the sink only through _Q_Trace. The default sink
// writes "file(line): text" to stderr; tests and applications set their own.
class MORVANE_EXPORT ErrorHandler
{
public:
    using TraceSink = std::function<void(const QString &file, const QString &text, unsigned short line)>;

    // Bit that the library's file handling asks before it traces a failure.
    static constexpr unsigned TraceErrors = 0x20;

    static ErrorHandler *Instance();

    virtual ~ErrorHandler();

    void SetTraceMask(unsigned mask);
    virtual unsigned GetTraceMask() const;

    // An empty function restores the default sink.
    void SetTraceSink(TraceSink sink);
    void Trace(const QString &file, const QString &text, unsigned short line) const;

protected:
    ErrorHandler();

private:
    unsigned m_mask = 0;
    TraceSink m_sink;
};

// Writes one trace line through the sink of ErrorHandler::Instance().
MORVANE_EXPORT void _Q_Trace(const QString &file, const QString &text, unsigned short line);

#endif

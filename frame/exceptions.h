#ifndef ORBELIN_EXCEPTIONS_H
#define ORBELIN_EXCEPTIONS_H

#include "frame/morvane_global.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <exception>

namespace ORBELIN {

// The failures of the record frame. All are thrown by value and caught by
// reference; GetMessage() gives the text exactly as it was built, what() the
// same text in UTF-8.
class MORVANE_EXPORT ReportException : public std::exception
{
public:
    explicit ReportException(const QString &message);
    ReportException(const ReportException &other);
    ReportException &operator=(const ReportException &other);
    ~ReportException() override;

    QString GetMessage() const;
    // The name of the exception class, for trace lines such as
    // "Error writing file %1. %2: %3".
    virtual QString GetExceptionName() const;
    const char *what() const noexcept override;

private:
    QString m_message;
    QByteArray m_utf8;
};

#define MORVANE_DECLARE_EXCEPTION(Name, Base)                                  \
    class MORVANE_EXPORT Name : public Base                                    \
    {                                                                          \
    public:                                                                    \
        explicit Name(const QString &message);                                 \
        Name(const Name &other);                                               \
        Name &operator=(const Name &other);                                    \
        ~Name() override;                                                      \
        QString GetExceptionName() const override;                             \
    };

MORVANE_DECLARE_EXCEPTION(OrbelinException, ReportException)
MORVANE_DECLARE_EXCEPTION(OutOfRangeException, OrbelinException)
MORVANE_DECLARE_EXCEPTION(BinaryParsingException, OrbelinException)
MORVANE_DECLARE_EXCEPTION(IncompleteDefinitionException, OrbelinException)
MORVANE_DECLARE_EXCEPTION(InvalidXmlException, OrbelinException)

#undef MORVANE_DECLARE_EXCEPTION

} // namespace ORBELIN

#endif

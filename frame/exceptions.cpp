#include "frame/exceptions.h"

namespace ORBELIN {

ReportException::ReportException(const QString &message)
    : m_message(message), m_utf8(message.toUtf8())
{
}

ReportException::ReportException(const ReportException &other) = default;
ReportException &ReportException::operator=(const ReportException &other) = default;
ReportException::~ReportException() = default;

QString ReportException::GetMessage() const
{
    return m_message;
}

QString ReportException::GetExceptionName() const
{
    return QStringLiteral("ReportException");
}

const char *ReportException::what() const noexcept
{
    return m_utf8.constData();
}

#define MORVANE_DEFINE_EXCEPTION(Name, Base)                                   \
    Name::Name(const QString &message) : Base(message) {}                      \
    Name::Name(const Name &other) = default;                                   \
    Name &Name::operator=(const Name &other) = default;                        \
    Name::~Name() = default;                                                   \
    QString Name::GetExceptionName() const { return QStringLiteral(#Name); }

MORVANE_DEFINE_EXCEPTION(OrbelinException, ReportException)
MORVANE_DEFINE_EXCEPTION(OutOfRangeException, OrbelinException)
MORVANE_DEFINE_EXCEPTION(BinaryParsingException, OrbelinException)
MORVANE_DEFINE_EXCEPTION(IncompleteDefinitionException, OrbelinException)
MORVANE_DEFINE_EXCEPTION(InvalidXmlException, OrbelinException)

} // namespace ORBELIN

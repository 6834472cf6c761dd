#include "frame/converters.h"

#include <QtCore/QDate>
#include <QtCore/QTime>

namespace ORBELIN {

namespace {
const QString s_dateTimeFormat = QStringLiteral("yyyy-MM-ddThh:mm:ss,zzzZ");
const QString s_timeFormat = QStringLiteral("hh:mm:ss,zzz");
const QString s_dateFormat = QStringLiteral("yyyy-MM-dd");
} // namespace

const QString &Converters::DateTimeFormat()
{
    return s_dateTimeFormat;
}

const QString &Converters::TimeFormat()
{
    return s_timeFormat;
}

QString Converters::ToString(const QDateTime &dateTime)
{
    if (!dateTime.isValid())
        return QString();
    const QDateTime utc = dateTime.toUTC();
    // Date and time are formatted apart, so that 'T' and 'Z' stay literal
    // whatever the Qt version makes of letters in a format string.
    return utc.date().toString(s_dateFormat) + QLatin1Char('T')
        + utc.time().toString(s_timeFormat) + QLatin1Char('Z');
}

QDateTime Converters::ToDateTime(const QString &text)
{
    // Exactly "yyyy-MM-ddThh:mm:ss,zzzZ": 24 characters. Date and time are
    // parsed apart and joined as UTC, so no local clock change can make a
    // valid text invalid.
    if (text.size() != 24 || text.at(10) != QLatin1Char('T') || text.at(23) != QLatin1Char('Z'))
        return QDateTime();
    const QDate date = QDate::fromString(text.left(10), s_dateFormat);
    const QTime time = QTime::fromString(text.mid(11, 12), s_timeFormat);
    if (!date.isValid() || !time.isValid())
        return QDateTime();
    return QDateTime(date, time, Qt::UTC);
}

} // namespace ORBELIN

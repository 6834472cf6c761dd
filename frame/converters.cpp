#include "frame/converters.h"

#include <QtCore/QDate>
#include <QtCore/QTime>

#include <charconv>

namespace ORBELIN {

namespace {
const QString s_dateTimeFormat = QStringLiteral("yyyy-MM-ddThh:mm:ss,zzzZ");
const QString s_timeFormat = QStringLiteral("hh:mm:ss,zzz");
const QString s_dateFormat = QStringLiteral("yyyy-MM-dd");
unsigned code(QChar c)
{
    return c.unicode();
}

unsigned code(char c)
{
    return uchar(c);
}

// A plain decimal: blanks, an optional minus, 1 to 30 digits with an optional
// point that has digits on both sides, blanks. False for anything else.
template <class C>
bool plainDecimal(const C *text, qsizetype size, double &value)
{
    qsizetype begin = 0;
    qsizetype end = size;
    while (begin < end && code(text[begin]) == ' ')
        ++begin;
    while (end > begin && code(text[end - 1]) == ' ')
        --end;
    char buffer[40];
    int length = 0;
    if (begin < end && code(text[begin]) == '-') {
        buffer[length++] = '-';
        ++begin;
    }
    int digits = 0;
    int before = 0;
    int after = -1;
    for (qsizetype i = begin; i < end; ++i) {
        const unsigned c = code(text[i]);
        if (c >= '0' && c <= '9') {
            if (++digits > 30)
                return false;
            after >= 0 ? ++after : ++before;
        } else if (c == '.' && after < 0) {
            after = 0;
        } else {
            return false;
        }
        buffer[length++] = char(c);
    }
    if (before == 0 || after == 0)
        return false;
    return std::from_chars(buffer, buffer + length, value).ec == std::errc();
}

// Two to four digits at `at`, or -1.
int number(const QString &text, int at, int count)
{
    int value = 0;
    for (int i = at; i < at + count; ++i) {
        const unsigned c = text.at(i).unicode();
        if (c < '0' || c > '9')
            return -1;
        value = value * 10 + int(c - '0');
    }
    return value;
}

} // namespace

double Converters::ToDouble(const QString &text)
{
    return ToDouble(QStringView(text));
}

double Converters::ToDouble(QStringView text)
{
    double value = 0.0;
    if (plainDecimal(text.data(), text.size(), value))
        return value;
    return text.toDouble();
}

double Converters::ToDouble(const QByteArray &utf8)
{
    double value = 0.0;
    if (plainDecimal(utf8.constData(), utf8.size(), value))
        return value;
    return QString::fromUtf8(utf8).toDouble();
}

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
    const QDate date = utc.date();
    const QTime time = utc.time();
    // A year of four digits, the usual case, is written digit by digit: a
    // list file writes one time per row. Any other year goes through Qt's
    // formatter, which decides how it is padded or signed.
    if (date.year() >= 1000 && date.year() <= 9999) {
        // Each field in its digits, then the character that follows it.
        const struct
        {
            int value;
            int digits;
            char after;
        } fields[] = {{date.year(), 4, '-'}, {date.month(), 2, '-'}, {date.day(), 2, 'T'}, {time.hour(), 2, ':'},
                      {time.minute(), 2, ':'}, {time.second(), 2, ','}, {time.msec(), 3, 'Z'}};
        QString text(24, Qt::Uninitialized);
        QChar *out = text.data();
        for (const auto &field : fields) {
            int value = field.value;
            for (int i = field.digits - 1; i >= 0; --i, value /= 10)
                out[i] = QLatin1Char(char('0' + value % 10));
            out += field.digits;
            *out++ = QLatin1Char(field.after);
        }
        return text;
    }
    // Date and time are formatted apart, so that 'T' and 'Z' stay literal
    // whatever the Qt version makes of letters in a format string.
    return date.toString(s_dateFormat) + QLatin1Char('T') + time.toString(s_timeFormat) + QLatin1Char('Z');
}

QDateTime Converters::ToDateTime(const QString &text)
{
    // Exactly "yyyy-MM-ddThh:mm:ss,zzzZ": 24 characters. Date and time are
    // parsed apart and joined as UTC, so no local clock change can make a
    // valid text invalid.
    if (text.size() != 24 || text.at(10) != QLatin1Char('T') || text.at(23) != QLatin1Char('Z'))
        return QDateTime();
    // The usual text, all digits where digits belong, is read digit by digit;
    // what that does not make a valid date and time goes through Qt's parser.
    if (text.at(4) == QLatin1Char('-') && text.at(7) == QLatin1Char('-') && text.at(13) == QLatin1Char(':')
        && text.at(16) == QLatin1Char(':') && text.at(19) == QLatin1Char(',')) {
        const int year = number(text, 0, 4);
        const int month = number(text, 5, 2);
        const int day = number(text, 8, 2);
        const int hour = number(text, 11, 2);
        const int minute = number(text, 14, 2);
        const int second = number(text, 17, 2);
        const int millisecond = number(text, 20, 3);
        if (year > 0 && month >= 0 && day >= 0 && hour >= 0 && minute >= 0 && second >= 0 && millisecond >= 0) {
            const QDate date(year, month, day);
            const QTime time(hour, minute, second, millisecond);
            if (date.isValid() && time.isValid())
                return QDateTime(date, time, Qt::UTC);
        }
    }
    const QDate date = QDate::fromString(text.left(10), s_dateFormat);
    const QTime time = QTime::fromString(text.mid(11, 12), s_timeFormat);
    if (!date.isValid() || !time.isValid())
        return QDateTime();
    return QDateTime(date, time, Qt::UTC);
}

} // namespace ORBELIN

#ifndef ORBELIN_CONVERTERS_H
#define ORBELIN_CONVERTERS_H

#include "frame/morvane_global.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringView>

namespace ORBELIN {

// Date and time as text: "yyyy-MM-ddThh:mm:ss,zzzZ", always in UTC and exact to
// the millisecond. A local time is converted to UTC on the way out; what is
// read back is a UTC QDateTime. A text that is no such date gives an invalid
// QDateTime, an invalid QDateTime gives an empty text.
class MORVANE_EXPORT Converters
{
public:
    static QString ToString(const QDateTime &dateTime);
    static QDateTime ToDateTime(const QString &text);

    static const QString &DateTimeFormat(); // "yyyy-MM-ddThh:mm:ss,zzzZ"
    static const QString &TimeFormat();     // "hh:mm:ss,zzz"

    // A number as text: exactly QString::toDouble (0 for what is no number),
    // the second form on the UTF-8 bytes of the text. A plain decimal (blanks,
    // an optional minus, digits, an optional point and digits) takes a short
    // way through std::from_chars, which rounds as Qt does; every other text
    // goes through Qt. The view form reads the text in place.
    static double ToDouble(const QString &text);
    static double ToDouble(QStringView text);
    static double ToDouble(const QByteArray &utf8);
};

} // namespace ORBELIN

#endif

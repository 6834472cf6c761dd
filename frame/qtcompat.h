#ifndef MORVANE_QTCOMPAT_H
#define MORVANE_QTCOMPAT_H

// The few places where Qt 5.15 and Qt 6 differ for this library. Everything
// else in the code base is written once against the API both majors share.

#include <QtCore/QDataStream>
#include <QtCore/QString>
#include <QtCore/QTextStream>
#include <QtCore/QXmlStreamReader>

namespace Morvane {
namespace Compat {

// The data stream version every stream made by the library is set to, so that
// both Qt majors write the very same bytes.
constexpr QDataStream::Version StreamVersion = QDataStream::Qt_5_15;

// QXmlStreamReader::name() is a QStringRef on Qt 5 and a QStringView on Qt 6.
inline QString elementName(const QXmlStreamReader &reader)
{
    return reader.name().toString();
}

// Compares the current token's name without making a QString of it.
inline bool nameIs(const QXmlStreamReader &reader, const QString &name)
{
    return reader.name() == name;
}

// Whether a stream sizes a QByteArray with the classic 32 bits (0xffffffff
// for the null array) whatever its length: every version before Qt 6.7.
inline bool classicSizes(const QDataStream &stream)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    return stream.version() < QDataStream::Qt_6_7;
#else
    Q_UNUSED(stream);
    return true;
#endif
}

// Text streams read and write UTF-8 on both majors.
inline void setUtf8(QTextStream &stream)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    stream.setEncoding(QStringConverter::Utf8);
#else
    stream.setCodec("UTF-8");
#endif
}

} // namespace Compat
} // namespace Morvane

#endif

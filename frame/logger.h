#ifndef ORBELIN_LOGGER_H
#define ORBELIN_LOGGER_H

#include "frame/morvane_global.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace ORBELIN {

// Records only carry a logger and hand it down to their children; nothing in
// the record frame writes to it. Applications derive from it to collect what
// their own code logs next to a record tree.
class MORVANE_EXPORT Logger
{
public:
    enum Level { Error = 0, Warning = 1, Info = 2 };

    Logger();
    virtual ~Logger();

    // "ERROR", "WARNING", "INFO", in that order.
    static const QStringList &LevelNames();

    // The default keeps nothing.
    virtual void Log(Level level, const QString &text);
};

} // namespace ORBELIN

#endif

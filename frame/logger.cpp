#include "frame/logger.h"

namespace ORBELIN {

namespace {
const QStringList s_levelNames = {QStringLiteral("ERROR"), QStringLiteral("WARNING"),
                                  QStringLiteral("INFO")};
}

Logger::Logger() = default;
Logger::~Logger() = default;

const QStringList &Logger::LevelNames()
{
    return s_levelNames;
}

void Logger::Log(Level, const QString &)
{
}

} // namespace ORBELIN

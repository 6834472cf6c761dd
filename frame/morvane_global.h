#ifndef MORVANE_GLOBAL_H
#define MORVANE_GLOBAL_H

#include <QtCore/qglobal.h>

// Only what carries MORVANE_EXPORT leaves the shared library.
#if defined(MORVANE_BUILDING_LIBRARY)
#  define MORVANE_EXPORT Q_DECL_EXPORT
#else
#  define MORVANE_EXPORT Q_DECL_IMPORT
#endif

#endif

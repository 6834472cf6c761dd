#ifndef MORVANE_H
#define MORVANE_H

// The one header an application includes: every public header of the library.

#include "frame/morvane_global.h"
#include "frame/qtcompat.h"
#include "frame/exceptions.h"
#include "frame/logger.h"
#include "frame/objecttypes.h"
#include "frame/converters.h"
#include "frame/trace.h"
#include "frame/iorbelinobject.h"
#include "frequencystore/recorddescriptor.h"
#include "frequencystore/record.h"
#include "frequencystore/records/records.h"
#include "frequencystore/csvcolumn.h"
#include "frequencystore/csvfileloader.h"
#include "frequencystore/filehandling.h"
#include "frequencystore/detectionresulthelper.h"

#endif

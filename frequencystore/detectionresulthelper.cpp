#include "frequencystore/detectionresulthelper.h"

#ifndef ORBELIN_OBJECTTYPES_H
#define ORBELIN_OBJECTTYPES_H

namespace ORBELIN {

// Records pass their object type on and never test it; one value serves all.
enum ObjectTypes { OT_Record = 0 };

} // namespace ORBELIN

#endif

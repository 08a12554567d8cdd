// InstanceFilter: what the server removes from instances before returning
// them to a client.
#ifndef ZAR_SERVER_CORE_INSTANCEFILTER_H
#define ZAR_SERVER_CORE_INSTANCEFILTER_H

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>

namespace zarserver {

// What to keep of an instance.
struct InstanceFilter {
    bool includeQualifiers = false;
    bool includeClassOrigin = false;
    Pegasus::CIMPropertyList propertyList;  // NULL keeps every property
    // When set, only the properties that this class has are kept (a shallow
    // enumeration leaves out properties that subclasses add).
    const Pegasus::CIMClass* onlyPropertiesOf = nullptr;
};

// Returns inst itself when nothing has to go, else a filtered clone (the
// provider's own object is never changed).
Pegasus::CIMInstance applyFilter(const Pegasus::CIMInstance& inst, const InstanceFilter& filter);

}  // namespace zarserver

#endif

// The provider interfaces: their constructors and destructors, so that their
// vtables live in libpegprovider.
#include <Pegasus/Provider/CIMAssociationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/CIMMethodProvider.h>
#include <Pegasus/Provider/CIMProvider.h>

PEGASUS_NAMESPACE_BEGIN

CIMProvider::CIMProvider() {}
CIMProvider::~CIMProvider() {}

CIMInstanceProvider::CIMInstanceProvider() {}
CIMInstanceProvider::~CIMInstanceProvider() {}

CIMMethodProvider::CIMMethodProvider() {}
CIMMethodProvider::~CIMMethodProvider() {}

CIMAssociationProvider::CIMAssociationProvider() {}
CIMAssociationProvider::~CIMAssociationProvider() {}

PEGASUS_NAMESPACE_END

//%/////////////////////////////////////////////////////////////////////////////
// CIMEnumerationContext: the client's side of an open enumeration of the
// pull operations. The application creates one, passes it to an open...()
// operation of CIMClient and then to its pull...() operations and
// closeEnumeration(); it is opaque to the application. At the end of the
// sequence (endOfSequence true) or after closeEnumeration() it no longer
// names an enumeration, and using it again throws
// InvalidEnumerationContextException. Not copyable.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMEnumerationContext_h
#define Pegasus_CIMEnumerationContext_h

#include <Pegasus/Client/Linkage.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/CIMName.h>

PEGASUS_NAMESPACE_BEGIN

class CIMEnumerationContextRep;

class PEGASUS_CLIENT_LINKAGE CIMEnumerationContext {
public:
    CIMEnumerationContext();
    ~CIMEnumerationContext();

    // Forgets the enumeration and its namespace.
    void clear();
    // Forgets the enumeration only (the server's context stays open).
    void clearEnumeration();

protected:
    CIMNamespaceName& getNameSpace();
    void setNameSpace(const CIMNamespaceName& n);
    String& getContextString();
    void setContextString(const String& s);

private:
    CIMEnumerationContextRep* _rep;

    CIMEnumerationContext(const CIMEnumerationContext& ec);
    CIMEnumerationContext& operator=(const CIMEnumerationContext& ec);
    friend class CIMClient;
};

PEGASUS_NAMESPACE_END

#endif

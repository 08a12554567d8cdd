//%/////////////////////////////////////////////////////////////////////////////
// CIMFlavor: the flavor bits of a qualifier (overridable, propagated to
// subclasses and instances, translatable).
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_CIMFlavor_h
#define Pegasus_CIMFlavor_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

class PEGASUS_COMMON_LINKAGE CIMFlavor {
public:
    // No flavor bits (NONE).
    CIMFlavor();
    CIMFlavor(const CIMFlavor& flavor);
    CIMFlavor& operator=(const CIMFlavor& flavor);

    // Sets, clears or tests the bits of flavor.
    void addFlavor(const CIMFlavor& flavor);
    void removeFlavor(const CIMFlavor& flavor);
    // True iff every bit of flavor is set here (NONE is always contained).
    Boolean hasFlavor(const CIMFlavor& flavor) const;

    // Same bits.
    Boolean equal(const CIMFlavor& flavor) const;

    // The union of both flavors.
    CIMFlavor operator+(const CIMFlavor& flavor) const;

    // The set bits as MOF keywords separated by single spaces, e.g.
    // "OVERRIDABLE TOSUBCLASS"; empty for NONE.
    String toString() const;

    static const CIMFlavor NONE;             // 0
    static const CIMFlavor OVERRIDABLE;      // 1
    static const CIMFlavor ENABLEOVERRIDE;   // 1
    static const CIMFlavor DISABLEOVERRIDE;  // 16
    static const CIMFlavor TOSUBCLASS;       // 2
    static const CIMFlavor RESTRICTED;       // 32
    static const CIMFlavor TOINSTANCE;       // 4
    static const CIMFlavor TRANSLATABLE;     // 8
    static const CIMFlavor DEFAULTS;         // OVERRIDABLE + TOSUBCLASS
    static const CIMFlavor TOSUBELEMENTS;    // == TOSUBCLASS

private:
    CIMFlavor(const Uint32 flavor);
    Uint32 cimFlavor;
};

PEGASUS_NAMESPACE_END

#endif

// CIMFlavor: a set of qualifier flavor bits.
#include <Pegasus/Common/CIMFlavor.h>

PEGASUS_NAMESPACE_BEGIN

const CIMFlavor CIMFlavor::NONE = CIMFlavor(Uint32(0));
const CIMFlavor CIMFlavor::OVERRIDABLE = CIMFlavor(Uint32(1));
const CIMFlavor CIMFlavor::ENABLEOVERRIDE = CIMFlavor(Uint32(1));
const CIMFlavor CIMFlavor::TOSUBCLASS = CIMFlavor(Uint32(2));
const CIMFlavor CIMFlavor::TOSUBELEMENTS = CIMFlavor(Uint32(2));
const CIMFlavor CIMFlavor::TOINSTANCE = CIMFlavor(Uint32(4));
const CIMFlavor CIMFlavor::TRANSLATABLE = CIMFlavor(Uint32(8));
const CIMFlavor CIMFlavor::DISABLEOVERRIDE = CIMFlavor(Uint32(16));
const CIMFlavor CIMFlavor::RESTRICTED = CIMFlavor(Uint32(32));
const CIMFlavor CIMFlavor::DEFAULTS = CIMFlavor(Uint32(1 | 2));

CIMFlavor::CIMFlavor() : cimFlavor(0) {}

CIMFlavor::CIMFlavor(const CIMFlavor& flavor) : cimFlavor(flavor.cimFlavor) {}

CIMFlavor::CIMFlavor(const Uint32 flavor) : cimFlavor(flavor) {}

CIMFlavor& CIMFlavor::operator=(const CIMFlavor& flavor)
{
    cimFlavor = flavor.cimFlavor;
    return *this;
}

void CIMFlavor::addFlavor(const CIMFlavor& flavor)
{
    cimFlavor |= flavor.cimFlavor;
}

void CIMFlavor::removeFlavor(const CIMFlavor& flavor)
{
    cimFlavor &= ~flavor.cimFlavor;
}

Boolean CIMFlavor::hasFlavor(const CIMFlavor& flavor) const
{
    return (cimFlavor & flavor.cimFlavor) == flavor.cimFlavor;
}

Boolean CIMFlavor::equal(const CIMFlavor& flavor) const
{
    return cimFlavor == flavor.cimFlavor;
}

CIMFlavor CIMFlavor::operator+(const CIMFlavor& flavor) const
{
    return CIMFlavor(cimFlavor | flavor.cimFlavor);
}

String CIMFlavor::toString() const
{
    static const struct {
        Uint32 bit;
        const char* word;
    } words[] = {
        {1, "OVERRIDABLE"},  {2, "TOSUBCLASS"},       {4, "TOINSTANCE"},
        {8, "TRANSLATABLE"}, {16, "DISABLEOVERRIDE"}, {32, "RESTRICTED"},
    };
    String result;
    for (size_t i = 0; i < sizeof(words) / sizeof(words[0]); i++) {
        if (cimFlavor & words[i].bit) {
            if (result.size())
                result.append(Char16(' '));
            result.append(words[i].word);
        }
    }
    return result;
}

PEGASUS_NAMESPACE_END

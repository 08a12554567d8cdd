#include "InstanceFilter.h"

using namespace Pegasus;

namespace zarserver {

namespace {

bool dropProperty(const CIMConstProperty& p, const InstanceFilter& f)
{
    if (!f.propertyList.useThisProperty(p.getName()))
        return true;
    return f.onlyPropertiesOf && f.onlyPropertiesOf->findProperty(p.getName()) == PEG_NOT_FOUND;
}

bool needsChange(const CIMInstance& inst, const InstanceFilter& f)
{
    if (!f.includeQualifiers && inst.getQualifierCount() > 0)
        return true;
    for (Uint32 i = 0; i < inst.getPropertyCount(); ++i) {
        CIMConstProperty p = inst.getProperty(i);
        if (dropProperty(p, f))
            return true;
        if (!f.includeQualifiers && p.getQualifierCount() > 0)
            return true;
        if (!f.includeClassOrigin && !p.getClassOrigin().isNull())
            return true;
    }
    return false;
}

}  // namespace

CIMInstance applyFilter(const CIMInstance& inst, const InstanceFilter& f)
{
    if (!needsChange(inst, f))
        return inst;
    CIMInstance out = inst.clone();
    if (!f.includeQualifiers)
        while (out.getQualifierCount())
            out.removeQualifier(out.getQualifierCount() - 1);
    for (Uint32 i = out.getPropertyCount(); i-- > 0;) {
        CIMProperty p = out.getProperty(i);
        if (dropProperty(p, f)) {
            out.removeProperty(i);
            continue;
        }
        if (!f.includeQualifiers)
            while (p.getQualifierCount())
                p.removeQualifier(p.getQualifierCount() - 1);
        if (!f.includeClassOrigin)
            p.setClassOrigin(CIMName());
    }
    return out;
}

}  // namespace zarserver

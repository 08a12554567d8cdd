// MofValue: converts a MOF initializer (mof::Literal) into a typed CIMValue.
#ifndef ZAR_SERVER_CORE_MOFVALUE_H
#define ZAR_SERVER_CORE_MOFVALUE_H

#include <map>
#include <string>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>

#include "MofAst.h"

namespace zarserver {

// Instance aliases seen so far in a compilation, by name (case-sensitive).
typedef std::map<std::string, Pegasus::CIMObjectPath> AliasMap;

// Returns lit as a value of the given type. A missing initializer or NULL
// gives a typed null. Integers are range-checked, strings become datetimes
// or object paths where the type asks for them, and $alias names an
// instance's path (aliases may be null when none are allowed). what names
// the element in error messages. Throws MofError at the literal's position.
Pegasus::CIMValue literalToValue(const mof::Literal& lit, Pegasus::CIMType type, bool isArray,
                                 const AliasMap* aliases, const std::string& what);

// Maps a MOF data type name ("uint16", "ref", ...; lower case) to its type.
Pegasus::CIMType typeFromName(const std::string& name);

}  // namespace zarserver

#endif

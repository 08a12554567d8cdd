// SchemaLoader: compiles a schema folder into a ClassRepository.
//
// The folder holds manifest.txt, whose lines name a namespace and a MOF file
// (relative to the folder), compiled in that order:
//
//     # comment
//     root/PG_InterOp   qualifiers.mof
//     root/PG_InterOp   interop/PG_ProviderRegistration.mof
//
// A file may be listed for several namespaces (qualifiers.mof usually is).
#ifndef ZAR_SERVER_CORE_SCHEMALOADER_H
#define ZAR_SERVER_CORE_SCHEMALOADER_H

#include <string>

#include "ClassRepository.h"

namespace zarserver {

// Name of the manifest file inside a schema folder.
extern const char* const kSchemaManifest;

// Compiles every file listed in schemaDir's manifest into repository.
// Throws MofError for MOF errors (file, line, column) and
// std::runtime_error for a missing or malformed manifest (file and line).
void loadSchema(const std::string& schemaDir, ClassRepository& repository);

}  // namespace zarserver

#endif

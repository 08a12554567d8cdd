#include "SchemaLoader.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <Pegasus/Common/Exception.h>

#include "MofParser.h"
#include "SchemaCompiler.h"

using namespace Pegasus;

namespace zarserver {

const char* const kSchemaManifest = "manifest.txt";

void loadSchema(const std::string& schemaDir, ClassRepository& repository)
{
    std::string manifest = schemaDir + "/" + kSchemaManifest;
    std::ifstream in(manifest);
    if (!in)
        throw std::runtime_error(manifest +
                                 ": cannot open schema manifest: " + std::strerror(errno));
    SchemaCompiler compiler(repository);
    std::string line;
    int lineNo = 0;
    while (std::getline(in, line)) {
        ++lineNo;
        std::istringstream words(line);
        std::string ns, file, extra;
        if (!(words >> ns) || ns[0] == '#')
            continue;
        if (!(words >> file) || (words >> extra))
            throw std::runtime_error(manifest + ":" + std::to_string(lineNo) +
                                     ": expected '<namespace> <MOF file>'");
        CIMNamespaceName nsName;
        try {
            nsName = CIMNamespaceName(String(ns.c_str()));
        } catch (const Exception&) {
            throw std::runtime_error(manifest + ":" + std::to_string(lineNo) + ": '" + ns +
                                     "' is not a valid namespace name");
        }
        std::string path = file[0] == '/' ? file : schemaDir + "/" + file;
        std::vector<mof::Declaration> decls;
        MofParser parser;
        parser.parseFile(path, decls);
        compiler.compile(decls, nsName);
    }
}

}  // namespace zarserver

//%/////////////////////////////////////////////////////////////////////////////
// Constants.h: well-known ports, service names, paths and timeouts.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_Constants_h
#define Pegasus_Constants_h

#include <Pegasus/Common/Config.h>

// Default CIM-XML ports and the service names looked up before them.
#define WBEM_DEFAULT_HTTP_PORT 5988
#define WBEM_DEFAULT_HTTPS_PORT 5989
#define WBEM_HTTP_SERVICE_NAME "wbem-http"
#define WBEM_HTTPS_SERVICE_NAME "wbem-https"

// Where the server keeps its start-up files, and the local-socket path that
// CIMClient::connectLocal() uses, in the default (development) layout.
#define PEGASUS_CIMSERVER_STARTFILES_DIR "/var/tmp"
#define PEGASUS_LOCAL_DOMAIN_SOCKET_PATH PEGASUS_CIMSERVER_STARTFILES_DIR "/cimxml.socket"

// Default time a client waits for a response.
#define PEGASUS_DEFAULT_CLIENT_TIMEOUT_MILLISECONDS 20000

#endif

//%/////////////////////////////////////////////////////////////////////////////
// SSLContext: the certificate settings a client uses for an HTTPS
// connection: the trust store that verifies the server, and optionally the
// client's own certificate and key.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_SSLContext_h
#define Pegasus_SSLContext_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

PEGASUS_NAMESPACE_BEGIN

class SSLCertificateInfo;
class SSLContextRep;

// Called for each certificate of the server's chain; returns true to accept.
typedef Boolean(SSLCertificateVerifyFunction)(SSLCertificateInfo& certInfo);

class PEGASUS_COMMON_LINKAGE SSLContext {
public:
    // trustStore: a PEM file or a folder of certificates that verify the
    // server (empty: no verification); verifyCert: optional callback;
    // randomFile: seed file for the random generator (may be empty).
    SSLContext(const String& trustStore, SSLCertificateVerifyFunction* verifyCert = NULL,
               const String& randomFile = String::EMPTY);

    // As above, with the client's certificate and private key (PEM files).
    SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
               SSLCertificateVerifyFunction* verifyCert, const String& randomFile);

    SSLContext(const SSLContext& sslContext);
    ~SSLContext();

    String getTrustStore() const;
    String getCertPath() const;
    String getKeyPath() const;
    // True when a trust store or a callback verifies the server.
    Boolean isPeerVerificationEnabled() const;
    SSLCertificateVerifyFunction* getSSLCertificateVerifyFunction() const;

private:
    SSLContext& operator=(const SSLContext& sslContext);  // not copy-assignable
    SSLContextRep* _rep;
};

PEGASUS_NAMESPACE_END

#endif

// SSLContext: the certificate settings of an HTTPS client connection.
#include <Pegasus/Common/SSLContext.h>

PEGASUS_NAMESPACE_BEGIN

class SSLContextRep {
public:
    String trustStore;
    String certPath;
    String keyPath;
    String randomFile;
    SSLCertificateVerifyFunction* verifyCert;
};

SSLContext::SSLContext(const String& trustStore, SSLCertificateVerifyFunction* verifyCert,
                       const String& randomFile)
    : _rep(new SSLContextRep)
{
    _rep->trustStore = trustStore;
    _rep->verifyCert = verifyCert;
    _rep->randomFile = randomFile;
}

SSLContext::SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
                       SSLCertificateVerifyFunction* verifyCert, const String& randomFile)
    : _rep(new SSLContextRep)
{
    _rep->trustStore = trustStore;
    _rep->certPath = certPath;
    _rep->keyPath = keyPath;
    _rep->verifyCert = verifyCert;
    _rep->randomFile = randomFile;
}

SSLContext::SSLContext(const SSLContext& sslContext) : _rep(new SSLContextRep(*sslContext._rep)) {}

SSLContext::~SSLContext()
{
    delete _rep;
}

String SSLContext::getTrustStore() const
{
    return _rep->trustStore;
}

String SSLContext::getCertPath() const
{
    return _rep->certPath;
}

String SSLContext::getKeyPath() const
{
    return _rep->keyPath;
}

Boolean SSLContext::isPeerVerificationEnabled() const
{
    return _rep->trustStore.size() != 0 || _rep->verifyCert != 0;
}

SSLCertificateVerifyFunction* SSLContext::getSSLCertificateVerifyFunction() const
{
    return _rep->verifyCert;
}

PEGASUS_NAMESPACE_END

// ClientAddressContainer: the client's network address in the context.
#include <Pegasus/Common/ClientAddressContainer.h>

PEGASUS_NAMESPACE_BEGIN

const String ClientAddressContainer::NAME = "ClientAddressContainer";

ClientAddressContainer::ClientAddressContainer(const OperationContext::Container& container)
{
    const ClientAddressContainer* p = dynamic_cast<const ClientAddressContainer*>(&container);
    if (!p)
        throw DynamicCastFailedException();
    _address = p->_address;
}

ClientAddressContainer::ClientAddressContainer(const ClientAddressContainer& container)
    : OperationContext::Container(), _address(container._address)
{
}

ClientAddressContainer::ClientAddressContainer(const String& address) : _address(address) {}

ClientAddressContainer::~ClientAddressContainer() {}

ClientAddressContainer& ClientAddressContainer::operator=(const ClientAddressContainer& container)
{
    _address = container._address;
    return *this;
}

String ClientAddressContainer::getName() const
{
    return NAME;
}

OperationContext::Container* ClientAddressContainer::clone() const
{
    return new ClientAddressContainer(*this);
}

void ClientAddressContainer::destroy()
{
    delete this;
}

String ClientAddressContainer::getAddress() const
{
    return _address;
}

PEGASUS_NAMESPACE_END

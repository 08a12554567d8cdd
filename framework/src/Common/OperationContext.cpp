// OperationContext: an owning list of named containers.
#include <vector>

#include <Pegasus/Common/OperationContext.h>

PEGASUS_NAMESPACE_BEGIN

class OperationContextRep {
public:
    std::vector<OperationContext::Container*> containers;

    // Index of the container named name, or -1.
    long find(const String& name) const
    {
        for (size_t i = 0; i < containers.size(); i++) {
            if (String::equal(containers[i]->getName(), name))
                return long(i);
        }
        return -1;
    }

    void destroyAll()
    {
        for (size_t i = 0; i < containers.size(); i++)
            containers[i]->destroy();
        containers.clear();
    }

    void cloneFrom(const OperationContextRep& x)
    {
        containers.reserve(x.containers.size());
        for (size_t i = 0; i < x.containers.size(); i++)
            containers.push_back(x.containers[i]->clone());
    }
};

OperationContext::Container::~Container() {}

OperationContext::OperationContext() : _rep(new OperationContextRep) {}

OperationContext::OperationContext(const OperationContext& context) : _rep(new OperationContextRep)
{
    _rep->cloneFrom(*context._rep);
}

OperationContext::~OperationContext()
{
    _rep->destroyAll();
    delete _rep;
}

OperationContext& OperationContext::operator=(const OperationContext& context)
{
    if (this != &context) {
        OperationContextRep copy;
        copy.cloneFrom(*context._rep);
        _rep->destroyAll();
        _rep->containers.swap(copy.containers);
    }
    return *this;
}

void OperationContext::clear()
{
    _rep->destroyAll();
}

const OperationContext::Container& OperationContext::get(const String& containerName) const
{
    long i = _rep->find(containerName);
    if (i < 0)
        throw Exception("object not found");
    return *_rep->containers[i];
}

Boolean OperationContext::contains(const String& containerName) const
{
    return _rep->find(containerName) >= 0;
}

void OperationContext::set(const Container& container)
{
    long i = _rep->find(container.getName());
    if (i < 0)
        throw Exception("object not found");
    Container* copy = container.clone();
    _rep->containers[i]->destroy();
    _rep->containers[i] = copy;
}

void OperationContext::insert(const Container& container)
{
    if (_rep->find(container.getName()) >= 0)
        throw Exception("object already exists.");
    Container* copy = container.clone();
    _rep->containers.push_back(copy);
}

void OperationContext::remove(const String& containerName)
{
    long i = _rep->find(containerName);
    if (i < 0)
        throw Exception("object not found");
    _rep->containers[i]->destroy();
    _rep->containers.erase(_rep->containers.begin() + i);
}

PEGASUS_NAMESPACE_END

// RefCounted: the intrusive, thread-safe reference count behind the shared
// handles of the object model (CIMInstance, CIMProperty, ...). A new object
// starts with one reference, owned by whoever created it.
#ifndef Pegasus_Common_RefCounted_h
#define Pegasus_Common_RefCounted_h

#include <atomic>

#include <Pegasus/Common/Config.h>

PEGASUS_NAMESPACE_BEGIN

class RefCounted {
public:
    RefCounted() : _refs(1) {}
    virtual ~RefCounted() {}

    void ref() { _refs.fetch_add(1, std::memory_order_relaxed); }
    void unref()
    {
        if (_refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

private:
    RefCounted(const RefCounted&);
    RefCounted& operator=(const RefCounted&);
    std::atomic<Uint32> _refs;
};

// Null-tolerant helpers: Ref returns its argument after taking a reference.
template <class R>
inline R* Ref(R* rep)
{
    if (rep)
        rep->ref();
    return rep;
}

template <class R>
inline void Unref(R* rep)
{
    if (rep)
        rep->unref();
}

// Points *target at source, taking and dropping references as needed.
template <class R, class S>
inline void Assign(R*& target, S* source)
{
    if (target != source) {
        Unref(target);
        target = Ref(source);
    }
}

PEGASUS_NAMESPACE_END

#endif

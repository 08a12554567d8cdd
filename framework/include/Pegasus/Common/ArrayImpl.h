//%/////////////////////////////////////////////////////////////////////////////
// ArrayImpl.h: member definitions of Array<T>, included by Array.h. The
// template is header-only, so an Array of any element type links.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ArrayImpl_h
#define Pegasus_ArrayImpl_h

#include <atomic>
#include <memory>
#include <new>
#include <utility>
#include <Pegasus/Common/ArrayInter.h>

PEGASUS_NAMESPACE_BEGIN

// The shared element buffer behind an Array<T>. A null Array::_rep is an
// empty array that owns nothing.
template <class T>
struct ArrayRep {
    std::atomic<Uint32> refs;
    Uint32 size;
    Uint32 capacity;
    T* items;

    explicit ArrayRep(Uint32 cap) : refs(1), size(0), capacity(cap), items(0)
    {
        if (cap)
            items = std::allocator<T>().allocate(cap);
    }

    ~ArrayRep()
    {
        std::destroy_n(items, size);
        if (items)
            std::allocator<T>().deallocate(items, capacity);
    }

    static ArrayRep* copyOf(const ArrayRep* r, Uint32 cap)
    {
        ArrayRep* n = new ArrayRep(cap < r->size ? r->size : cap);
        std::uninitialized_copy_n(r->items, r->size, n->items);
        n->size = r->size;
        return n;
    }

    static void unref(ArrayRep* r)
    {
        if (r && r->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete r;
    }
};

#define PEGASUS_ARRAY_REP(P) (static_cast<ArrayRep<T>*>(P))

template <class T>
Array<T>::Array() : _rep(0)
{
}

template <class T>
Array<T>::Array(const Array<T>& x) : _rep(x._rep)
{
    if (_rep)
        PEGASUS_ARRAY_REP(_rep)->refs.fetch_add(1, std::memory_order_relaxed);
}

template <class T>
Array<T>::Array(Uint32 size) : _rep(0)
{
    if (size) {
        ArrayRep<T>* r = new ArrayRep<T>(size);
        std::uninitialized_value_construct_n(r->items, size);
        r->size = size;
        _rep = r;
    }
}

template <class T>
Array<T>::Array(Uint32 size, const T& x) : _rep(0)
{
    grow(size, x);
}

template <class T>
Array<T>::Array(const T* items, Uint32 size) : _rep(0)
{
    append(items, size);
}

template <class T>
Array<T>::~Array()
{
    ArrayRep<T>::unref(PEGASUS_ARRAY_REP(_rep));
}

template <class T>
Array<T>& Array<T>::operator=(const Array<T>& x)
{
    if (x._rep != _rep) {
        if (x._rep)
            PEGASUS_ARRAY_REP(x._rep)->refs.fetch_add(1, std::memory_order_relaxed);
        ArrayRep<T>::unref(PEGASUS_ARRAY_REP(_rep));
        _rep = x._rep;
    }
    return *this;
}

template <class T>
void Array<T>::clear()
{
    ArrayRep<T>::unref(PEGASUS_ARRAY_REP(_rep));
    _rep = 0;
}

// Makes _rep unshared with room for at least capacity elements.
template <class T>
void Array<T>::_reserve(Uint32 capacity)
{
    ArrayRep<T>* r = PEGASUS_ARRAY_REP(_rep);
    if (!r) {
        if (capacity)
            _rep = new ArrayRep<T>(capacity);
        return;
    }
    if (r->refs.load(std::memory_order_acquire) == 1) {
        if (r->capacity >= capacity)
            return;
        ArrayRep<T>* n = new ArrayRep<T>(capacity);
        std::uninitialized_move_n(r->items, r->size, n->items);
        n->size = r->size;
        delete r;
        _rep = n;
        return;
    }
    ArrayRep<T>* n = ArrayRep<T>::copyOf(r, capacity);
    ArrayRep<T>::unref(r);
    _rep = n;
}

template <class T>
void Array<T>::reserveCapacity(Uint32 capacity)
{
    _reserve(capacity);
}

// Opens a gap of n default-constructed slots at index (index <= size()).
template <class T>
void Array<T>::_makeRoom(Uint32 index, Uint32 n)
{
    Uint32 oldSize = size();
    Uint32 need = oldSize + n;
    Uint32 cap = getCapacity();
    if (_rep && PEGASUS_ARRAY_REP(_rep)->refs.load(std::memory_order_acquire) != 1)
        cap = oldSize;
    if (need > cap) {
        Uint32 grown = cap < 8 ? 8 : cap * 2;
        _reserve(need > grown ? need : grown);
    } else {
        _reserve(need);
    }
    ArrayRep<T>* r = PEGASUS_ARRAY_REP(_rep);
    T* p = r->items;
    // Move the tail up by n, constructing the slots past the old end.
    Uint32 tail = oldSize - index;
    Uint32 i = tail;
    while (i > 0) {
        --i;
        Uint32 from = index + i;
        Uint32 to = from + n;
        if (to >= oldSize)
            new (p + to) T(std::move(p[from]));
        else
            p[to] = std::move(p[from]);
    }
    // Slots in the gap that lie past the old end are still raw memory.
    for (Uint32 k = index; k < index + n; k++) {
        if (k >= oldSize)
            new (p + k) T();
    }
    r->size = need;
}

template <class T>
void Array<T>::grow(Uint32 size, const T& x)
{
    if (size == 0)
        return;
    T copy(x);
    Uint32 old = this->size();
    _reserve(old + size);
    ArrayRep<T>* r = PEGASUS_ARRAY_REP(_rep);
    std::uninitialized_fill_n(r->items + old, size, copy);
    r->size = old + size;
}

template <class T>
void Array<T>::swap(Array<T>& x)
{
    void* t = _rep;
    _rep = x._rep;
    x._rep = t;
}

template <class T>
Uint32 Array<T>::size() const
{
    return _rep ? PEGASUS_ARRAY_REP(_rep)->size : 0;
}

template <class T>
Uint32 Array<T>::getCapacity() const
{
    return _rep ? PEGASUS_ARRAY_REP(_rep)->capacity : 0;
}

template <class T>
const T* Array<T>::getData() const
{
    return _rep ? PEGASUS_ARRAY_REP(_rep)->items : 0;
}

template <class T>
T& Array<T>::operator[](Uint32 index)
{
    if (index >= size())
        ArrayThrowIndexOutOfBoundsException();
    _reserve(size());
    return PEGASUS_ARRAY_REP(_rep)->items[index];
}

template <class T>
const T& Array<T>::operator[](Uint32 index) const
{
    if (index >= size())
        ArrayThrowIndexOutOfBoundsException();
    return PEGASUS_ARRAY_REP(_rep)->items[index];
}

template <class T>
void Array<T>::append(const T& x)
{
    insert(size(), &x, 1);
}

template <class T>
void Array<T>::append(const T* x, Uint32 size)
{
    insert(this->size(), x, size);
}

template <class T>
void Array<T>::appendArray(const Array<T>& x)
{
    Array<T> keep(x);
    append(keep.getData(), keep.size());
}

template <class T>
void Array<T>::prepend(const T& x)
{
    insert(0, &x, 1);
}

template <class T>
void Array<T>::prepend(const T* x, Uint32 size)
{
    insert(0, x, size);
}

template <class T>
void Array<T>::insert(Uint32 index, const T& x)
{
    insert(index, &x, 1);
}

template <class T>
void Array<T>::insert(Uint32 index, const T* x, Uint32 size)
{
    if (index > this->size())
        ArrayThrowIndexOutOfBoundsException();
    if (size == 0)
        return;
    // The source may lie inside this array's own buffer: copy it first.
    Array<T> source;
    const T* data = getData();
    if (data && x + size > data && x < data + this->size()) {
        source = Array<T>();
        source._reserve(size);
        ArrayRep<T>* s = PEGASUS_ARRAY_REP(source._rep);
        std::uninitialized_copy_n(x, size, s->items);
        s->size = size;
        x = s->items;
    }
    _makeRoom(index, size);
    T* p = PEGASUS_ARRAY_REP(_rep)->items;
    for (Uint32 i = 0; i < size; i++)
        p[index + i] = x[i];
}

template <class T>
void Array<T>::remove(Uint32 index)
{
    remove(index, 1);
}

template <class T>
void Array<T>::remove(Uint32 index, Uint32 size)
{
    if (size == 0)
        return;
    Uint32 n = this->size();
    if (index >= n || size > n - index)
        ArrayThrowIndexOutOfBoundsException();
    if (size == n) {
        clear();
        return;
    }
    _reserve(n);
    ArrayRep<T>* r = PEGASUS_ARRAY_REP(_rep);
    T* p = r->items;
    for (Uint32 i = index + size; i < n; i++)
        p[i - size] = std::move(p[i]);
    std::destroy_n(p + n - size, size);
    r->size = n - size;
}

#undef PEGASUS_ARRAY_REP

PEGASUS_NAMESPACE_END

#endif

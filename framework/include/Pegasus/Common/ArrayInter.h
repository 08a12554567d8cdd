//%/////////////////////////////////////////////////////////////////////////////
// ArrayInter.h: declaration of the Array<T> class template. Array.h brings in
// the member definitions; include Array.h rather than this header.
//%/////////////////////////////////////////////////////////////////////////////
#ifndef Pegasus_ArrayInter_h
#define Pegasus_ArrayInter_h

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

PEGASUS_NAMESPACE_BEGIN

// Throws IndexOutOfBoundsException; kept out of line so that Array.h need not
// include Exception.h (which itself uses arrays).
PEGASUS_COMMON_LINKAGE void ArrayThrowIndexOutOfBoundsException();

// A sequence of T with value semantics: copies share the elements until one of
// them is changed (copy-on-write, safe to copy from several threads).
// Every index outside the elements throws IndexOutOfBoundsException.
template <class T>
class Array {
public:
    // An empty array.
    Array();

    Array(const Array<T>& x);

    // size default-constructed elements.
    Array(Uint32 size);

    // size copies of x.
    Array(Uint32 size, const T& x);

    // Copies of the size elements at items.
    Array(const T* items, Uint32 size);

    ~Array();

    Array<T>& operator=(const Array<T>& x);

    // Removes every element.
    void clear();

    // Makes room for capacity elements without changing the content.
    void reserveCapacity(Uint32 capacity);

    // Appends size copies of x.
    void grow(Uint32 size, const T& x);

    // Exchanges the contents of the two arrays.
    void swap(Array<T>& x);

    Uint32 size() const;

    // Number of elements the array can hold before it reallocates.
    Uint32 getCapacity() const;

    // The elements in order (null when the array has never held any);
    // valid until the array is next changed.
    const T* getData() const;

    // The element at index; throws IndexOutOfBoundsException if index >= size().
    T& operator[](Uint32 index);
    const T& operator[](Uint32 index) const;

    void append(const T& x);
    void append(const T* x, Uint32 size);
    void appendArray(const Array<T>& x);

    // Inserts at the front.
    void prepend(const T& x);
    void prepend(const T* x, Uint32 size);

    // Inserts before index; index == size() appends, index > size() throws.
    void insert(Uint32 index, const T& x);
    void insert(Uint32 index, const T* x, Uint32 size);

    // Removes the element at index; throws if index >= size().
    void remove(Uint32 index);

    // Removes size elements from index; size 0 does nothing; throws
    // IndexOutOfBoundsException if the range passes the end.
    void remove(Uint32 index, Uint32 size);

private:
    void _reserve(Uint32 capacity);
    void _makeRoom(Uint32 index, Uint32 n);
    void* _rep;
};

PEGASUS_NAMESPACE_END

#endif

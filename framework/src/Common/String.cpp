// String and CString: UTF-16 text in a shared, copy-on-write buffer.

#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/MessageLoader.h>
#include <Pegasus/Common/InternalException.h>

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#include "Utf8.h"

PEGASUS_NAMESPACE_BEGIN

// The buffer: size code units plus a terminating 0, room for capacity units.
// The static empty buffer is shared by every empty string and never freed.
struct StringRep {
    std::atomic<Uint32> refs;
    Uint32 size;
    Uint32 capacity;
    Uint16 data[1];

    constexpr StringRep() : refs(1), size(0), capacity(0), data{0} {}
};

namespace {

StringRep _emptyRep;

inline StringRep* _alloc(Uint32 capacity)
{
    size_t bytes = offsetof(StringRep, data) + (size_t(capacity) + 1) * sizeof(Uint16);
    void* p = std::malloc(bytes);
    if (!p)
        throw std::bad_alloc();
    StringRep* r = static_cast<StringRep*>(p);
    new (&r->refs) std::atomic<Uint32>(1);
    r->size = 0;
    r->capacity = capacity;
    r->data[0] = 0;
    return r;
}

inline void _ref(StringRep* r)
{
    if (r != &_emptyRep)
        r->refs.fetch_add(1, std::memory_order_relaxed);
}

inline void _unref(StringRep* r)
{
    if (r != &_emptyRep && r->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        std::free(r);
}

inline StringRep* _fromUnits(const Uint16* p, Uint32 n)
{
    if (n == 0)
        return &_emptyRep;
    StringRep* r = _alloc(n);
    std::memcpy(r->data, p, n * sizeof(Uint16));
    r->data[n] = 0;
    r->size = n;
    return r;
}

inline StringRep* _fromUtf8(const char* s, Uint32 n)
{
    if (n == 0)
        return &_emptyRep;
    StringRep* r = _alloc(n);
    try {
        r->size = Utf8Decode(s, n, r->data);
    } catch (...) {
        std::free(r);
        throw;
    }
    r->data[r->size] = 0;
    return r;
}

inline Uint32 _units(const Char16* str)
{
    const Uint16* p = reinterpret_cast<const Uint16*>(str);
    const Uint16* q = p;
    while (*q)
        q++;
    return Uint32(q - p);
}

inline Uint16 _lower(Uint16 c)
{
    return (c >= 'A' && c <= 'Z') ? Uint16(c + ('a' - 'A')) : c;
}

inline Uint16 _upper(Uint16 c)
{
    return (c >= 'a' && c <= 'z') ? Uint16(c - ('a' - 'A')) : c;
}

}  // namespace

// Makes _rep unshared with room for at least capacity units, content kept.
static StringRep* _unique(StringRep* r, Uint32 capacity)
{
    if (r != &_emptyRep && r->refs.load(std::memory_order_acquire) == 1 &&
        r->capacity >= capacity) {
        return r;
    }
    Uint32 cap = capacity < r->size ? r->size : capacity;
    StringRep* n = _alloc(cap);
    std::memcpy(n->data, r->data, (r->size + 1) * sizeof(Uint16));
    n->size = r->size;
    _unref(r);
    return n;
}

// Room for size() + extra units, growing geometrically.
static StringRep* _grow(StringRep* r, Uint32 extra)
{
    Uint32 need = r->size + extra;
    if (r != &_emptyRep && r->refs.load(std::memory_order_acquire) == 1 && r->capacity >= need) {
        return r;
    }
    Uint32 cap = need;
    if (r->size > 0 && cap < r->size * 2)
        cap = r->size * 2;
    return _unique(r, cap < 8 ? 8 : cap);
}

//------------------------------------------------------------------------------
// CString
//------------------------------------------------------------------------------

CString::CString() : _rep(0) {}

CString::CString(const CString& cstr) : _rep(0)
{
    if (cstr._rep) {
        size_t n = std::strlen(cstr._rep) + 1;
        _rep = new char[n];
        std::memcpy(_rep, cstr._rep, n);
    }
}

CString::CString(char* cstr) : _rep(cstr) {}

CString::~CString()
{
    delete[] _rep;
}

CString& CString::operator=(const CString& cstr)
{
    if (&cstr != this) {
        CString copy(cstr);
        char* t = _rep;
        _rep = copy._rep;
        copy._rep = t;
    }
    return *this;
}

CString::operator const char*() const
{
    return _rep;
}

//------------------------------------------------------------------------------
// String
//------------------------------------------------------------------------------

const String String::EMPTY;

String::String() : _rep(&_emptyRep) {}

String::String(const String& str) : _rep(str._rep)
{
    _ref(_rep);
}

String::String(const String& str, Uint32 n)
{
    if (n > str._rep->size)
        throw IndexOutOfBoundsException();
    _rep = _fromUnits(str._rep->data, n);
}

String::String(const Char16* str)
{
    if (!str)
        throw NullPointer();
    _rep = _fromUnits(reinterpret_cast<const Uint16*>(str), _units(str));
}

String::String(const Char16* str, Uint32 n)
{
    if (!str && n)
        throw NullPointer();
    _rep = _fromUnits(reinterpret_cast<const Uint16*>(str), n);
}

String::String(const char* str)
{
    if (!str)
        throw NullPointer();
    _rep = _fromUtf8(str, Uint32(std::strlen(str)));
}

String::String(const char* str, Uint32 n)
{
    if (!str && n)
        throw NullPointer();
    _rep = _fromUtf8(str, n);
}

String::String(const String& s1, const String& s2)
{
    Uint32 n1 = s1._rep->size, n2 = s2._rep->size;
    if (n1 + n2 == 0) {
        _rep = &_emptyRep;
        return;
    }
    _rep = _alloc(n1 + n2);
    std::memcpy(_rep->data, s1._rep->data, n1 * sizeof(Uint16));
    std::memcpy(_rep->data + n1, s2._rep->data, n2 * sizeof(Uint16));
    _rep->size = n1 + n2;
    _rep->data[n1 + n2] = 0;
}

String::String(const String& s1, const char* s2) : _rep(&_emptyRep)
{
    String tail(s2);
    String both(s1, tail);
    _rep = both._rep;
    _ref(_rep);
}

String::String(const char* s1, const String& s2) : _rep(&_emptyRep)
{
    String head(s1);
    String both(head, s2);
    _rep = both._rep;
    _ref(_rep);
}

String::~String()
{
    _unref(_rep);
}

String& String::operator=(const String& str)
{
    return assign(str);
}

String& String::operator=(const char* str)
{
    return assign(str);
}

String& String::assign(const String& str)
{
    if (str._rep != _rep) {
        _ref(str._rep);
        _unref(_rep);
        _rep = str._rep;
    }
    return *this;
}

String& String::assign(const Char16* str)
{
    String tmp(str);
    return assign(tmp);
}

String& String::assign(const Char16* str, Uint32 n)
{
    String tmp(str, n);
    return assign(tmp);
}

String& String::assign(const char* str)
{
    String tmp(str);
    return assign(tmp);
}

String& String::assign(const char* str, Uint32 n)
{
    String tmp(str, n);
    return assign(tmp);
}

void String::clear()
{
    if (_rep != &_emptyRep && _rep->refs.load(std::memory_order_acquire) == 1) {
        _rep->size = 0;
        _rep->data[0] = 0;
        return;
    }
    _unref(_rep);
    _rep = &_emptyRep;
}

void String::reserveCapacity(Uint32 capacity)
{
    if (capacity > _rep->capacity || _rep->refs.load() != 1) {
        if (capacity == 0 && _rep == &_emptyRep)
            return;
        _rep = _unique(_rep, capacity);
    }
}

Uint32 String::size() const
{
    return _rep->size;
}

const Char16* String::getChar16Data() const
{
    return reinterpret_cast<const Char16*>(_rep->data);
}

CString String::getCString() const
{
    return CString(Utf8Encode(_rep->data, _rep->size));
}

Char16& String::operator[](Uint32 index)
{
    if (index > _rep->size)
        throw IndexOutOfBoundsException();
    if (_rep == &_emptyRep) {
        // The terminating 0 of an empty string must still be writable storage
        // of this string, not the shared empty buffer.
        _rep = _alloc(0);
    } else {
        _rep = _unique(_rep, _rep->size);
    }
    return reinterpret_cast<Char16*>(_rep->data)[index];
}

const Char16 String::operator[](Uint32 index) const
{
    if (index > _rep->size)
        throw IndexOutOfBoundsException();
    return Char16(_rep->data[index]);
}

String& String::append(const Char16& c)
{
    Uint16 u = c;
    _rep = _grow(_rep, 1);
    _rep->data[_rep->size++] = u;
    _rep->data[_rep->size] = 0;
    return *this;
}

String& String::append(const Char16* str, Uint32 n)
{
    if (n == 0)
        return *this;
    if (!str)
        throw NullPointer();
    // str may point into this string's own buffer, which growing may free.
    const Uint16* src = reinterpret_cast<const Uint16*>(str);
    if (src >= _rep->data && src <= _rep->data + _rep->size) {
        String copy(str, n);
        return append(copy);
    }
    _rep = _grow(_rep, n);
    std::memmove(_rep->data + _rep->size, str, n * sizeof(Uint16));
    _rep->size += n;
    _rep->data[_rep->size] = 0;
    return *this;
}

String& String::append(const String& str)
{
    if (str._rep->size == 0)
        return *this;
    if (str._rep == _rep) {
        // Appending to itself: growing would free the source.
        String copy(str.getChar16Data(), str.size());
        return append(copy);
    }
    if (_rep == &_emptyRep)
        return assign(str);
    return append(str.getChar16Data(), str.size());
}

String& String::append(const char* str)
{
    String tmp(str);
    return append(tmp);
}

String& String::append(const char* str, Uint32 size)
{
    String tmp(str, size);
    return append(tmp);
}

void String::remove(Uint32 index, Uint32 size)
{
    Uint32 n = _rep->size;
    if (index > n)
        throw IndexOutOfBoundsException();
    if (size == PEG_NOT_FOUND)
        size = n - index;
    if (size > n - index)
        throw IndexOutOfBoundsException();
    if (size == 0)
        return;
    _rep = _unique(_rep, n);
    std::memmove(_rep->data + index, _rep->data + index + size,
                 (n - index - size + 1) * sizeof(Uint16));
    _rep->size = n - size;
}

String String::subString(Uint32 index, Uint32 n) const
{
    Uint32 size = _rep->size;
    if (index >= size)
        return String();
    if (n == PEG_NOT_FOUND || n > size - index)
        n = size - index;
    if (index == 0 && n == size)
        return *this;
    return String(getChar16Data() + index, n);
}

Uint32 String::find(Char16 c) const
{
    Uint16 u = c;
    const Uint16* p = _rep->data;
    for (Uint32 i = 0; i < _rep->size; i++) {
        if (p[i] == u)
            return i;
    }
    return PEG_NOT_FOUND;
}

Uint32 String::find(Uint32 index, Char16 c) const
{
    if (index > _rep->size)
        throw IndexOutOfBoundsException();
    Uint16 u = c;
    const Uint16* p = _rep->data;
    for (Uint32 i = index; i < _rep->size; i++) {
        if (p[i] == u)
            return i;
    }
    return PEG_NOT_FOUND;
}

Uint32 String::find(const String& s) const
{
    Uint32 n = _rep->size, m = s._rep->size;
    if (m > n)
        return PEG_NOT_FOUND;
    const Uint16* p = _rep->data;
    const Uint16* q = s._rep->data;
    for (Uint32 i = 0; i + m <= n; i++) {
        if (std::memcmp(p + i, q, m * sizeof(Uint16)) == 0)
            return i;
    }
    return PEG_NOT_FOUND;
}

Uint32 String::find(const char* s) const
{
    return find(String(s));
}

Uint32 String::reverseFind(Char16 c) const
{
    Uint16 u = c;
    const Uint16* p = _rep->data;
    for (Uint32 i = _rep->size; i > 0; i--) {
        if (p[i - 1] == u)
            return i - 1;
    }
    return PEG_NOT_FOUND;
}

void String::toLower()
{
    Uint32 n = _rep->size;
    Uint32 i = 0;
    while (i < n && _lower(_rep->data[i]) == _rep->data[i])
        i++;
    if (i == n)
        return;
    _rep = _unique(_rep, n);
    for (; i < n; i++)
        _rep->data[i] = _lower(_rep->data[i]);
}

void String::toUpper()
{
    Uint32 n = _rep->size;
    Uint32 i = 0;
    while (i < n && _upper(_rep->data[i]) == _rep->data[i])
        i++;
    if (i == n)
        return;
    _rep = _unique(_rep, n);
    for (; i < n; i++)
        _rep->data[i] = _upper(_rep->data[i]);
}

void String::appendPrintf(const char* format, ...)
{
    char small[256];
    va_list ap;
    va_start(ap, format);
    int n = std::vsnprintf(small, sizeof(small), format, ap);
    va_end(ap);
    if (n < 0)
        return;
    if (size_t(n) < sizeof(small)) {
        append(small, Uint32(n));
        return;
    }
    char* big = new char[size_t(n) + 1];
    va_start(ap, format);
    std::vsnprintf(big, size_t(n) + 1, format, ap);
    va_end(ap);
    try {
        append(big, Uint32(n));
    } catch (...) {
        delete[] big;
        throw;
    }
    delete[] big;
}

int String::compare(const String& s1, const String& s2, Uint32 n)
{
    const Uint16* p = s1._rep->data;
    const Uint16* q = s2._rep->data;
    // Both buffers are 0-terminated, so the loop stops at the shorter end.
    for (Uint32 i = 0; i < n; i++) {
        int d = int(p[i]) - int(q[i]);
        if (d != 0)
            return d;
        if (p[i] == 0)
            return 0;
    }
    return 0;
}

int String::compare(const String& s1, const String& s2)
{
    return compare(s1, s2, PEG_NOT_FOUND);
}

int String::compare(const String& s1, const char* s2)
{
    return compare(s1, String(s2));
}

int String::compareNoCase(const String& s1, const String& s2)
{
    const Uint16* p = s1._rep->data;
    const Uint16* q = s2._rep->data;
    for (;; p++, q++) {
        int d = int(_lower(*p)) - int(_lower(*q));
        if (d != 0)
            return d;
        if (*p == 0)
            return 0;
    }
}

Boolean String::equal(const String& s1, const String& s2)
{
    return s1._rep == s2._rep ||
           (s1._rep->size == s2._rep->size &&
            std::memcmp(s1._rep->data, s2._rep->data, s1._rep->size * sizeof(Uint16)) == 0);
}

Boolean String::equal(const String& s1, const char* s2)
{
    if (!s2)
        throw NullPointer();
    // Fast path: compare ASCII bytes directly.
    const Uint16* p = s1._rep->data;
    Uint32 n = s1._rep->size;
    Uint32 i = 0;
    for (; i < n; i++) {
        unsigned char c = static_cast<unsigned char>(s2[i]);
        if (c == 0 || c >= 0x80)
            break;
        if (p[i] != c)
            return false;
    }
    if (i == n)
        return s2[i] == 0;
    if (s2[i] == 0)
        return false;
    return equal(s1, String(s2));
}

Boolean String::equalNoCase(const String& s1, const String& s2)
{
    Uint32 n = s1._rep->size;
    if (n != s2._rep->size)
        return false;
    const Uint16* p = s1._rep->data;
    const Uint16* q = s2._rep->data;
    for (Uint32 i = 0; i < n; i++) {
        if (p[i] != q[i] && _lower(p[i]) != _lower(q[i]))
            return false;
    }
    return true;
}

Boolean String::equalNoCase(const String& s1, const char* s2)
{
    return equalNoCase(s1, String(s2));
}

//------------------------------------------------------------------------------
// Free operators
//------------------------------------------------------------------------------

Boolean operator==(const String& str1, const String& str2)
{
    return String::equal(str1, str2);
}

Boolean operator==(const String& str1, const char* str2)
{
    return String::equal(str1, str2);
}

Boolean operator==(const char* str1, const String& str2)
{
    return String::equal(str2, str1);
}

Boolean operator!=(const String& str1, const String& str2)
{
    return !String::equal(str1, str2);
}

Boolean operator!=(const String& str1, const char* str2)
{
    return !String::equal(str1, str2);
}

Boolean operator!=(const char* str1, const String& str2)
{
    return !String::equal(str2, str1);
}

PEGASUS_STD(ostream) & operator<<(PEGASUS_STD(ostream) & os, const String& str)
{
    const Char16* p = str.getChar16Data();
    Uint32 n = str.size();
    for (Uint32 i = 0; i < n; i++) {
        Uint16 c = p[i];
        if (c > 0 && c <= 0xFF) {
            os << char(c);
        } else {
            char buf[8];
            std::snprintf(buf, sizeof(buf), "\\x%04X", unsigned(c));
            os << buf;
        }
    }
    return os;
}

String operator+(const String& str1, const String& str2)
{
    return String(str1, str2);
}

String operator+(const String& str1, const char* str2)
{
    return String(str1, str2);
}

String operator+(const char* str1, const String& str2)
{
    return String(str1, str2);
}

Boolean operator<(const String& a, const String& b)
{
    return String::compare(a, b) < 0;
}
Boolean operator<=(const String& a, const String& b)
{
    return String::compare(a, b) <= 0;
}
Boolean operator>(const String& a, const String& b)
{
    return String::compare(a, b) > 0;
}
Boolean operator>=(const String& a, const String& b)
{
    return String::compare(a, b) >= 0;
}
Boolean operator<(const String& a, const char* b)
{
    return String::compare(a, b) < 0;
}
Boolean operator<=(const String& a, const char* b)
{
    return String::compare(a, b) <= 0;
}
Boolean operator>(const String& a, const char* b)
{
    return String::compare(a, b) > 0;
}
Boolean operator>=(const String& a, const char* b)
{
    return String::compare(a, b) >= 0;
}
Boolean operator<(const char* a, const String& b)
{
    return String::compare(String(a), b) < 0;
}
Boolean operator<=(const char* a, const String& b)
{
    return String::compare(String(a), b) <= 0;
}
Boolean operator>(const char* a, const String& b)
{
    return String::compare(String(a), b) > 0;
}
Boolean operator>=(const char* a, const String& b)
{
    return String::compare(String(a), b) >= 0;
}

PEGASUS_NAMESPACE_END

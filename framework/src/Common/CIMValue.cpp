// CIMValue: a typed scalar or array value, possibly null.

#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMInstance.h>

#include <atomic>
#include <cstdio>
#include <variant>

PEGASUS_NAMESPACE_BEGIN

namespace {

template <class T>
struct Traits;
template <>
struct Traits<Boolean> {
    static const CIMType type = CIMTYPE_BOOLEAN;
};
template <>
struct Traits<Uint8> {
    static const CIMType type = CIMTYPE_UINT8;
};
template <>
struct Traits<Sint8> {
    static const CIMType type = CIMTYPE_SINT8;
};
template <>
struct Traits<Uint16> {
    static const CIMType type = CIMTYPE_UINT16;
};
template <>
struct Traits<Sint16> {
    static const CIMType type = CIMTYPE_SINT16;
};
template <>
struct Traits<Uint32> {
    static const CIMType type = CIMTYPE_UINT32;
};
template <>
struct Traits<Sint32> {
    static const CIMType type = CIMTYPE_SINT32;
};
template <>
struct Traits<Uint64> {
    static const CIMType type = CIMTYPE_UINT64;
};
template <>
struct Traits<Sint64> {
    static const CIMType type = CIMTYPE_SINT64;
};
template <>
struct Traits<Real32> {
    static const CIMType type = CIMTYPE_REAL32;
};
template <>
struct Traits<Real64> {
    static const CIMType type = CIMTYPE_REAL64;
};
template <>
struct Traits<Char16> {
    static const CIMType type = CIMTYPE_CHAR16;
};
template <>
struct Traits<String> {
    static const CIMType type = CIMTYPE_STRING;
};
template <>
struct Traits<CIMDateTime> {
    static const CIMType type = CIMTYPE_DATETIME;
};
template <>
struct Traits<CIMObjectPath> {
    static const CIMType type = CIMTYPE_REFERENCE;
};
template <>
struct Traits<CIMObject> {
    static const CIMType type = CIMTYPE_OBJECT;
};
template <>
struct Traits<CIMInstance> {
    static const CIMType type = CIMTYPE_INSTANCE;
};
template <class T>
struct Traits<Array<T>> {
    static const CIMType type = Traits<T>::type;
};

typedef std::variant<std::monostate, Boolean, Uint8, Sint8, Uint16, Sint16, Uint32, Sint32, Uint64,
                     Sint64, Real32, Real64, Char16, String, CIMDateTime, CIMObjectPath, CIMObject,
                     CIMInstance, Array<Boolean>, Array<Uint8>, Array<Sint8>, Array<Uint16>,
                     Array<Sint16>, Array<Uint32>, Array<Sint32>, Array<Uint64>, Array<Sint64>,
                     Array<Real32>, Array<Real64>, Array<Char16>, Array<String>, Array<CIMDateTime>,
                     Array<CIMObjectPath>, Array<CIMObject>, Array<CIMInstance>>
    Data;

}  // namespace

// Immutable once built; copies of a CIMValue share it.
struct CIMValueRep {
    std::atomic<Uint32> refs{1};
    CIMType type = CIMTYPE_BOOLEAN;
    bool isArray = false;
    bool isNull = true;
    Uint32 arraySize = 0;
    Data data;
};

namespace {

void _unref(CIMValueRep* r)
{
    if (r && r->refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete r;
}

void _replace(CIMValueRep*& rep, CIMValueRep* r)
{
    _unref(rep);
    rep = r;
}

CIMValueRep* _null(CIMType type, bool isArray, Uint32 arraySize)
{
    CIMValueRep* r = new CIMValueRep;
    r->type = type;
    r->isArray = isArray;
    r->arraySize = isArray ? arraySize : 0;
    return r;
}

// Embedded objects are stored and returned as independent copies.
template <class T>
T _stored(const T& x)
{
    return x;
}

CIMObject _stored(const CIMObject& x)
{
    if (x.isUninitialized())
        throw UninitializedObjectException();
    return x.clone();
}

CIMInstance _stored(const CIMInstance& x)
{
    if (x.isUninitialized())
        throw UninitializedObjectException();
    return x.clone();
}

template <class T>
Array<T> _stored(const Array<T>& x)
{
    return x;
}

Array<CIMObject> _stored(const Array<CIMObject>& x)
{
    Array<CIMObject> out;
    out.reserveCapacity(x.size());
    for (Uint32 i = 0; i < x.size(); i++)
        out.append(_stored(x[i]));
    return out;
}

Array<CIMInstance> _stored(const Array<CIMInstance>& x)
{
    Array<CIMInstance> out;
    out.reserveCapacity(x.size());
    for (Uint32 i = 0; i < x.size(); i++)
        out.append(_stored(x[i]));
    return out;
}

template <class T>
CIMValueRep* _make(const T& x)
{
    T v = _stored(x);
    CIMValueRep* r = new CIMValueRep;
    r->type = Traits<T>::type;
    r->isArray = false;
    r->isNull = false;
    r->data.template emplace<T>(v);
    return r;
}

template <class T>
CIMValueRep* _make(const Array<T>& x)
{
    Array<T> v = _stored(x);
    CIMValueRep* r = new CIMValueRep;
    r->type = Traits<T>::type;
    r->isArray = true;
    r->isNull = false;
    r->arraySize = v.size();
    r->data.template emplace<Array<T>>(v);
    return r;
}

template <class T>
void _get(const CIMValueRep* r, T& x)
{
    CIMType type = r ? r->type : CIMTYPE_BOOLEAN;
    bool isArray = r ? r->isArray : false;
    if (type != Traits<T>::type || isArray)
        throw TypeMismatchException();
    if (!r || r->isNull)
        return;
    x = _stored(std::get<T>(r->data));
}

template <class T>
void _get(const CIMValueRep* r, Array<T>& x)
{
    if (!r || r->type != Traits<T>::type || !r->isArray)
        throw TypeMismatchException();
    if (r->isNull)
        return;
    x = _stored(std::get<Array<T>>(r->data));
}

// Element equality: objects and instances by identical(), the rest by ==.
template <class T>
bool _eq(const T& a, const T& b)
{
    return a == b;
}
bool _eq(const CIMObject& a, const CIMObject& b)
{
    return a.identical(b);
}
bool _eq(const CIMInstance& a, const CIMInstance& b)
{
    return a.identical(b);
}

template <class T>
bool _eq(const Array<T>& a, const Array<T>& b)
{
    if (a.size() != b.size())
        return false;
    for (Uint32 i = 0; i < a.size(); i++) {
        if (!_eq(a[i], b[i]))
            return false;
    }
    return true;
}

struct EqualVisitor {
    const Data& other;
    template <class T>
    bool operator()(const T& a) const
    {
        return _eq(a, std::get<T>(other));
    }
    bool operator()(const std::monostate&) const { return true; }
};

// Text of one element.
void _text(String& out, Boolean x)
{
    out.append(x ? "TRUE" : "FALSE");
}
void _text(String& out, Uint8 x)
{
    out.appendPrintf("%u", unsigned(x));
}
void _text(String& out, Sint8 x)
{
    out.appendPrintf("%d", int(x));
}
void _text(String& out, Uint16 x)
{
    out.appendPrintf("%u", unsigned(x));
}
void _text(String& out, Sint16 x)
{
    out.appendPrintf("%d", int(x));
}
void _text(String& out, Uint32 x)
{
    out.appendPrintf("%u", x);
}
void _text(String& out, Sint32 x)
{
    out.appendPrintf("%d", x);
}
void _text(String& out, Uint64 x)
{
    out.appendPrintf("%llu", x);
}
void _text(String& out, Sint64 x)
{
    out.appendPrintf("%lld", x);
}
void _text(String& out, Real32 x)
{
    out.appendPrintf("%.16e", double(x));
}
void _text(String& out, Real64 x)
{
    out.appendPrintf("%.16e", x);
}
void _text(String& out, const Char16& x)
{
    out.append(x);
}
void _text(String& out, const String& x)
{
    out.append(x);
}
void _text(String& out, const CIMDateTime& x)
{
    out.append(x.toString());
}
void _text(String& out, const CIMObjectPath& x)
{
    out.append(x.toString());
}
void _text(String& out, const CIMObject& x)
{
    out.append(x.toString());
}
void _text(String& out, const CIMInstance& x)
{
    out.append(CIMObject(x).toString());
}

template <class T>
void _text(String& out, const Array<T>& x)
{
    for (Uint32 i = 0; i < x.size(); i++) {
        _text(out, x[i]);
        out.append(Char16(' '));
    }
}

struct TextVisitor {
    String& out;
    template <class T>
    void operator()(const T& x) const
    {
        _text(out, x);
    }
    void operator()(const std::monostate&) const {}
};

}  // namespace

CIMValue::CIMValue() : _rep(0) {}

CIMValue::CIMValue(CIMType type, Boolean isArray, Uint32 arraySize)
    : _rep(_null(type, isArray, arraySize))
{
}

CIMValue::CIMValue(Boolean x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Uint8 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Sint8 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Uint16 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Sint16 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Uint32 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Sint32 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Uint64 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Sint64 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Real32 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(Real64 x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Char16& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const String& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const CIMDateTime& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const CIMObjectPath& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const CIMObject& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const CIMInstance& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Boolean>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Uint8>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Sint8>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Uint16>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Sint16>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Uint32>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Sint32>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Uint64>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Sint64>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Real32>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Real64>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<Char16>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<String>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<CIMDateTime>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<CIMObjectPath>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<CIMObject>& x) : _rep(0)
{
    set(x);
}
CIMValue::CIMValue(const Array<CIMInstance>& x) : _rep(0)
{
    set(x);
}
void CIMValue::set(Boolean x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Uint8 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Sint8 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Uint16 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Sint16 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Uint32 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Sint32 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Uint64 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Sint64 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Real32 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(Real64 x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Char16& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const String& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const CIMDateTime& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const CIMObjectPath& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const CIMObject& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const CIMInstance& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Boolean>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Uint8>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Sint8>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Uint16>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Sint16>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Uint32>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Sint32>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Uint64>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Sint64>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Real32>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Real64>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<Char16>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<String>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<CIMDateTime>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<CIMObjectPath>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<CIMObject>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::set(const Array<CIMInstance>& x)
{
    _replace(_rep, _make(x));
}
void CIMValue::get(Boolean& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Uint8& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Sint8& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Uint16& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Sint16& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Uint32& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Sint32& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Uint64& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Sint64& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Real32& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Real64& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Char16& x) const
{
    _get(_rep, x);
}
void CIMValue::get(String& x) const
{
    _get(_rep, x);
}
void CIMValue::get(CIMDateTime& x) const
{
    _get(_rep, x);
}
void CIMValue::get(CIMObjectPath& x) const
{
    _get(_rep, x);
}
void CIMValue::get(CIMObject& x) const
{
    _get(_rep, x);
}
void CIMValue::get(CIMInstance& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Boolean>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Uint8>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Sint8>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Uint16>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Sint16>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Uint32>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Sint32>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Uint64>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Sint64>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Real32>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Real64>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<Char16>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<String>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<CIMDateTime>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<CIMObjectPath>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<CIMObject>& x) const
{
    _get(_rep, x);
}
void CIMValue::get(Array<CIMInstance>& x) const
{
    _get(_rep, x);
}

CIMValue::CIMValue(const CIMValue& x) : _rep(x._rep)
{
    if (_rep)
        _rep->refs.fetch_add(1, std::memory_order_relaxed);
}

CIMValue::~CIMValue()
{
    _unref(_rep);
}

CIMValue& CIMValue::operator=(const CIMValue& x)
{
    assign(x);
    return *this;
}

void CIMValue::assign(const CIMValue& x)
{
    if (x._rep != _rep) {
        if (x._rep)
            x._rep->refs.fetch_add(1, std::memory_order_relaxed);
        _replace(_rep, x._rep);
    }
}

void CIMValue::clear()
{
    _replace(_rep, 0);
}

Boolean CIMValue::typeCompatible(const CIMValue& x) const
{
    return getType() == x.getType() && isArray() == x.isArray();
}

Boolean CIMValue::isArray() const
{
    return _rep ? _rep->isArray : false;
}

Boolean CIMValue::isNull() const
{
    return _rep ? _rep->isNull : true;
}

Uint32 CIMValue::getArraySize() const
{
    return _rep ? _rep->arraySize : 0;
}

CIMType CIMValue::getType() const
{
    return _rep ? _rep->type : CIMTYPE_BOOLEAN;
}

void CIMValue::setNullValue(CIMType type, Boolean isArray, Uint32 arraySize)
{
    _replace(_rep, _null(type, isArray, arraySize));
}

Boolean CIMValue::equal(const CIMValue& x) const
{
    if (!typeCompatible(x) || isNull() != x.isNull())
        return false;
    if (isNull() || _rep == x._rep)
        return true;
    return std::visit(EqualVisitor{x._rep->data}, _rep->data);
}

String CIMValue::toString() const
{
    String out;
    if (!isNull())
        std::visit(TextVisitor{out}, _rep->data);
    return out;
}

// Deprecated char forms: a char is a sint8.
CIMValue::CIMValue(char x) : _rep(0)
{
    set(Sint8(x));
}

CIMValue::CIMValue(const Array<char>& x) : _rep(0)
{
    set(x);
}

void CIMValue::set(char x)
{
    set(Sint8(x));
}

void CIMValue::set(const Array<char>& x)
{
    Array<Sint8> s;
    s.reserveCapacity(x.size());
    for (Uint32 i = 0; i < x.size(); i++)
        s.append(Sint8(x[i]));
    set(s);
}

void CIMValue::get(char& x) const
{
    Sint8 s = Sint8(x);
    get(s);
    x = char(s);
}

void CIMValue::get(Array<char>& x) const
{
    Array<Sint8> s;
    get(s);
    if (isNull())
        return;
    Array<char> c;
    c.reserveCapacity(s.size());
    for (Uint32 i = 0; i < s.size(); i++)
        c.append(char(s[i]));
    x = c;
}

Boolean operator==(const CIMValue& x, const CIMValue& y)
{
    return x.equal(y);
}

Boolean operator!=(const CIMValue& x, const CIMValue& y)
{
    return !x.equal(y);
}

PEGASUS_NAMESPACE_END

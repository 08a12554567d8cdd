// Tests of Array<T> and the helpers of ArrayInternal.h.

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/ArrayInternal.h>
#include <Pegasus/Common/Exception.h>

#include <gtest/gtest.h>

#include <memory>

PEGASUS_USING_PEGASUS;

namespace {

// Counts live objects so that leaks and double destruction show.
struct Counted {
    static int live;
    int v;
    Counted() : v(0) { live++; }
    Counted(int x) : v(x) { live++; }
    Counted(const Counted& o) : v(o.v) { live++; }
    Counted& operator=(const Counted& o)
    {
        v = o.v;
        return *this;
    }
    ~Counted() { live--; }
    bool operator==(const Counted& o) const { return v == o.v; }
};
int Counted::live = 0;

Array<Uint32> make(std::initializer_list<Uint32> xs)
{
    Array<Uint32> a;
    for (Uint32 x : xs)
        a.append(x);
    return a;
}

TEST(ArrayTest, ConstructionFormsAndReserve)
{
    Array<Uint32> empty;
    EXPECT_EQ(0u, empty.size());
    Array<Uint32> zeros(3);
    ASSERT_EQ(3u, zeros.size());
    EXPECT_EQ(0u, zeros[2]);
    Array<String> filled(2, String("x"));
    EXPECT_EQ(String("x"), filled[1]);
    Uint32 raw[] = {4, 5, 6};
    Array<Uint32> fromRaw(raw, 3);
    EXPECT_TRUE(fromRaw == make({4, 5, 6}));
    Array<Boolean> flags(2, true);
    EXPECT_TRUE(flags.getData()[1]);

    Array<Uint32> a = make({9});
    a.reserveCapacity(50);
    EXPECT_GE(a.getCapacity(), 50u);
    EXPECT_TRUE(a == make({9}));
}

TEST(ArrayTest, CopyOnWrite)
{
    Array<String> a;
    a.append("one");
    Array<String> b(a);
    Array<String> c;
    c = a;
    EXPECT_EQ(a.getData(), b.getData());  // shared until written
    b[0] = "changed";
    c.append("two");
    EXPECT_EQ(String("one"), a[0]);
    EXPECT_EQ(1u, a.size());
    EXPECT_EQ(String("changed"), b[0]);
    EXPECT_EQ(2u, c.size());
    EXPECT_NE(a.getData(), b.getData());
}

TEST(ArrayTest, IndexChecksBounds)
{
    Array<Uint32> a = make({1, 2});
    EXPECT_THROW(a[2], IndexOutOfBoundsException);
    const Array<Uint32>& ca = a;
    EXPECT_THROW(ca[2], IndexOutOfBoundsException);
    EXPECT_THROW(Array<Uint32>()[0], IndexOutOfBoundsException);
}

TEST(ArrayTest, InsertPrependAndGrow)
{
    Array<Uint32> a = make({1, 4});
    a.insert(1, 2);
    Uint32 three = 3;
    a.insert(2, &three, 1);
    a.insert(a.size(), 5);  // inserting at size() appends
    a.prepend(0);
    EXPECT_TRUE(a == make({0, 1, 2, 3, 4, 5}));
    EXPECT_THROW(a.insert(a.size() + 1, 9), IndexOutOfBoundsException);
    a.grow(2, 7);
    EXPECT_TRUE(a == make({0, 1, 2, 3, 4, 5, 7, 7}));
    Uint32 front[] = {8, 9};
    a.prepend(front, 2);
    EXPECT_EQ(8u, a[0]);
    EXPECT_EQ(10u, a.size());
}

TEST(ArrayTest, AppendingFromItself)
{
    Array<String> a;
    a.append("x");
    for (int i = 0; i < 10; i++)
        a.append(a[0]);  // the argument lives in the buffer
    EXPECT_EQ(11u, a.size());
    EXPECT_EQ(String("x"), a[10]);
    a.appendArray(a);
    EXPECT_EQ(22u, a.size());
    a.insert(1, a.getData(), 3);
    EXPECT_EQ(25u, a.size());
}

TEST(ArrayTest, RemoveThrowsForEveryOutOfRangeCase)
{
    Array<Uint32> a = make({1, 2, 3});
    EXPECT_THROW(a.remove(0, 5), IndexOutOfBoundsException);
    EXPECT_THROW(a.remove(2, 2), IndexOutOfBoundsException);  // OpenPegasus would remove one
    EXPECT_THROW(a.remove(3), IndexOutOfBoundsException);
    a.remove(1, 0);
    EXPECT_TRUE(a == make({1, 2, 3}));
    a.remove(1);
    EXPECT_TRUE(a == make({1, 3}));
    a.remove(0, 2);
    EXPECT_EQ(0u, a.size());
}

TEST(ArrayTest, ElementsAreConstructedAndDestroyedExactlyOnce)
{
    Counted::live = 0;
    {
        Array<Counted> a;
        for (int i = 0; i < 100; i++)
            a.append(Counted(i));
        Array<Counted> b(a);
        b.remove(10, 20);
        b.insert(5, Counted(-1));
        a.clear();
        EXPECT_EQ(81, Counted::live);
        EXPECT_EQ(-1, b[5].v);
        EXPECT_EQ(30, b[10 + 1].v);  // b[11] was a[30] before the insert shifted it
        Array<Counted> c(3);
        c.swap(b);
        EXPECT_EQ(3u, b.size());
        EXPECT_EQ(81u, c.size());
    }
    EXPECT_EQ(0, Counted::live);
}

TEST(ArrayInternalTest, EqualityContainsAndSort)
{
    EXPECT_TRUE(make({1, 2}) == make({1, 2}));
    EXPECT_FALSE(make({1, 2}) == make({2, 1}));
    EXPECT_FALSE(make({1}) == make({1, 1}));
    EXPECT_TRUE(Contains(make({5, 6}), Uint32(6)));
    EXPECT_FALSE(Contains(make({5, 6}), Uint32(7)));
    Array<Uint32> a = make({3, 1, 2, 1});
    BubbleSort(a);
    EXPECT_TRUE(a == make({1, 1, 2, 3}));
}

}  // namespace

#include "vrllib/core/shared_ptr.h"

#include <utility>

#include <gtest/gtest.h>

namespace {

using Vorlane_v1_0::shared_ptr;

/// Counts the objects that are alive.
class Counted {
public:
    explicit Counted(int& count) : alive(count) { ++alive; }
    Counted(Counted const&) = delete;
    Counted& operator=(Counted const&) = delete;
    virtual ~Counted() { --alive; }

    int value = 5;

private:
    int& alive;
};

class Derived : public Counted {
public:
    Derived(int& count, bool& wasDestroyed) : Counted(count), destroyed(wasDestroyed) {}
    ~Derived() override { destroyed = true; }

private:
    bool& destroyed;
};

TEST(SharedPtr, DestroysTheObjectWithTheSecondOfTwoHandles) {
    int alive = 0;
    {
        shared_ptr<Counted> first(new Counted(alive));
        {
            shared_ptr<Counted> const second(first);
            EXPECT_EQ(first.useCount(), 2u);
            EXPECT_EQ(second.get(), first.get());
            first = shared_ptr<Counted>();
            EXPECT_EQ(alive, 1);
        }
        EXPECT_EQ(alive, 0);
    }
    EXPECT_EQ(alive, 0);
}

TEST(SharedPtr, MadeByDefaultHasABlockAndNoObject) {
    shared_ptr<Counted> const handle;
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_EQ(handle.useCount(), 1u);
    shared_ptr<Counted> const copy(handle);
    EXPECT_EQ(handle.useCount(), 2u);
}

TEST(SharedPtr, OfANullPointerHoldsNoObject) {
    shared_ptr<Counted> const handle(nullptr);
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.useCount(), 1u);
}

TEST(SharedPtr, ReachesItsObject) {
    int alive = 0;
    shared_ptr<Counted> const handle(new Counted(alive));
    EXPECT_TRUE(handle);
    EXPECT_EQ(handle->value, 5);
    EXPECT_EQ(&*handle, handle.get());
}

TEST(SharedPtr, AssignmentReleasesTheOldObjectAndSharesTheNewOne) {
    int left = 0;
    int right = 0;
    shared_ptr<Counted> target(new Counted(left));
    shared_ptr<Counted> const source(new Counted(right));
    target = source;
    EXPECT_EQ(left, 0);
    EXPECT_EQ(right, 1);
    EXPECT_EQ(source.useCount(), 2u);
    EXPECT_EQ(target.get(), source.get());
}

TEST(SharedPtr, AssignedToItselfOrToACopyKeepsItsObject) {
    int alive = 0;
    shared_ptr<Counted> handle(new Counted(alive));
    shared_ptr<Counted> const& same = handle;
    handle = same;
    EXPECT_EQ(handle.useCount(), 1u);
    shared_ptr<Counted> const copy(handle);
    handle = copy;
    EXPECT_EQ(handle.useCount(), 2u);
    EXPECT_EQ(alive, 1);
}

TEST(SharedPtr, MovedFromHasNoBlock) {
    int alive = 0;
    shared_ptr<Counted> source(new Counted(alive));
    shared_ptr<Counted> target(std::move(source));
    EXPECT_EQ(source.useCount(), 0u);
    EXPECT_FALSE(source);
    EXPECT_EQ(target.useCount(), 1u);
    source = std::move(target);
    EXPECT_EQ(source.useCount(), 1u);
    EXPECT_EQ(target.get(), nullptr);
    EXPECT_EQ(alive, 1);
}

TEST(SharedPtr, CopyOfAHandleWithoutABlockHasNoneEither) {
    shared_ptr<Counted> source;
    shared_ptr<Counted> const taken(std::move(source));
    shared_ptr<Counted> const copy(source);
    EXPECT_EQ(copy.useCount(), 0u);
    EXPECT_FALSE(copy);
}

TEST(SharedPtr, DestroysThroughTheVirtualDestructor) {
    int alive = 0;
    bool destroyed = false;
    { shared_ptr<Counted> const handle(new Derived(alive, destroyed)); }
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(alive, 0);
}

/// Holds a handle on its like.
struct Link {
    shared_ptr<Link> next;
};

TEST(SharedPtr, TakesASourceThatTheReleasedObjectHolds) {
    shared_ptr<Link> chain(new Link);
    chain->next = shared_ptr<Link>(new Link);
    Link* const second = chain->next.get();
    chain = chain->next;
    EXPECT_EQ(chain.get(), second);
    EXPECT_EQ(chain.useCount(), 1u);
}

}  // namespace

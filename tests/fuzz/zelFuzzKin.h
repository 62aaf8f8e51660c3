#pragma once

#include "zelFuzzHost.h"

namespace zelFuzz {

/// The second base of a class: a listener with ports of its own. Their parent is set in its
/// constructor, when the object is no node and no compound yet.
class SideListener : public Listener {
public:
    explicit SideListener(Universe& universe);
    ~SideListener() override;

    ZEL::AddRefWrapper<ZEL::PortList> list;
    PortPtr single; ///< Made in no list.

protected:
    /// First thing in the destructor of the class: such a parent outlives its ports.
    void close();
};

/// A node or compound with a second base behind the first.
template <class Main>
class MainThenSide final : public Main, public SideListener {
public:
    template <class... Args>
    explicit MainThenSide(Universe& universe, Args&&... args)
        : Main(universe, std::forward<Args>(args)...),
          SideListener(universe)
    {
        Main::side = this;
    }
    ~MainThenSide() override
    {
        close();
        Main::side = nullptr;
    }
};

/// The same with the second base in front.
template <class Main>
class SideThenMain final : public SideListener, public Main {
public:
    template <class... Args>
    explicit SideThenMain(Universe& universe, Args&&... args)
        : SideListener(universe),
          Main(universe, std::forward<Args>(args)...)
    {
        Main::side = this;
    }
    ~SideThenMain() override
    {
        close();
        Main::side = nullptr;
    }
};

/// A node that is a compound as well, of no other node. Its ports have both as parent.
class FuzzBoth final : public FuzzNode, public FuzzCompound {
public:
    explicit FuzzBoth(Universe& universe);
    ~FuzzBoth() override;
};

} // namespace zelFuzz

// Long lists of editors against plain vectors, as zelListDifferenceTest.cpp does for ports and
// nodes.

#include "zelListModel.h"

#include <functional>
#include <memory>

using namespace ZEL;

namespace {

/// Adds its number to a log when it hears something, and may do something meanwhile.
class LoggingEditor final : public HostEditor {
public:
    LoggingEditor(int number, std::vector<int>& log) : m_number(number), m_log(log) {}
    void zel_onNodeChange(ENodeChangeType /*type*/,
                          const AddRefWrapper<Compound>& /*compound*/,
                          const AddRefWrapper<Node>& /*node*/) override
    {
        m_log.push_back(m_number);
        if (during)
            std::exchange(during, nullptr)();
    }

    std::function<void()> during;

private:
    int m_number;
    std::vector<int>& m_log;
};

/// Some notifiers with many editors in common, each list beside a vector of numbers.
class EditorModel {
public:
    explicit EditorModel(unsigned seed) : m_random(seed)
    {
        for (int i = 0; i < kNotifiers; ++i)
            m_notifiers.push_back(std::make_unique<HostEditorNotifier>());
        m_registered.resize(kNotifiers);
        for (int i = 0; i < kEditors; ++i)
            m_editors.push_back(std::make_unique<LoggingEditor>(i, m_log));
    }

    void step(int goal)
    {
        const int which = m_random.below(kNotifiers);
        const bool grows = static_cast<int>(numbers(which).size()) < goal;
        const int number = m_random.below(kEditors);
        const int kind = m_random.below(grows ? 14 : 24);
        if (kind < 10)
            grows ? add(which, number) : remove(which, pickRegistered(which));
        else if (kind == 10)
            restart(number);
        else if (kind == 11 && m_random.oneIn(10))
            restartNotifier(which);
        else if (kind == 12)
            ignoreNull(which);
        else
            remove(which, number);
        notify(m_random.below(kNotifiers));
    }

private:
    static constexpr int kNotifiers = 3;
    static constexpr int kEditors = 500;

    std::vector<int>& numbers(int which) { return m_registered[static_cast<std::size_t>(which)]; }
    HostEditorNotifier& notifier(int which)
    {
        return *m_notifiers[static_cast<std::size_t>(which)];
    }
    std::unique_ptr<LoggingEditor>& editor(int number)
    {
        return m_editors[static_cast<std::size_t>(number)];
    }
    int pickRegistered(int which)
    {
        return numbers(which).empty() ? 0 : m_random.from(numbers(which));
    }

    void add(int which, int number)
    {
        notifier(which).registerEditor(editor(number).get());
        if (std::count(numbers(which).begin(), numbers(which).end(), number) == 0)
            numbers(which).push_back(number);
    }

    void remove(int which, int number)
    {
        notifier(which).unregisterEditor(editor(number).get());
        forget(which, number);
    }

    void forget(int which, int number)
    {
        auto& all = numbers(which);
        all.erase(std::remove(all.begin(), all.end(), number), all.end());
    }

    void restart(int number) // Its notifiers forget the one that dies.
    {
        editor(number) = std::make_unique<LoggingEditor>(number, m_log);
        for (int which = 0; which < kNotifiers; ++which)
            forget(which, number);
    }

    void restartNotifier(int which)
    {
        m_notifiers[static_cast<std::size_t>(which)] = std::make_unique<HostEditorNotifier>();
        numbers(which).clear();
    }

    void ignoreNull(int which)
    {
        notifier(which).registerEditor(nullptr);
        notifier(which).unregisterEditor(nullptr);
    }

    /// Every editor hears it once, in order; now and then one takes itself off meanwhile, so that
    /// the next one is passed over (the walk reads the list anew), or adds one at the end.
    void notify(int which)
    {
        std::vector<int> expected = numbers(which);
        if (!expected.empty() && m_random.oneIn(4)) {
            const std::size_t place =
                static_cast<std::size_t>(m_random.below(static_cast<int>(expected.size())));
            const int number = expected[place];
            if (m_random.oneIn(2)) {
                editor(number)->during = [this, which, number] { remove(which, number); };
                if (place + 1 < expected.size())
                    expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(place) + 1);
            } else {
                const int added = m_random.below(kEditors);
                editor(number)->during = [this, which, added] { add(which, added); };
                if (std::count(expected.begin(), expected.end(), added) == 0)
                    expected.push_back(added);
            }
        }
        m_log.clear();
        notifier(which).notifyNodeChange(eNodeChanged, nullptr, nullptr);
        ASSERT_EQ(expected, m_log);
    }

    Random m_random;
    std::vector<int> m_log;
    std::vector<std::unique_ptr<HostEditorNotifier>> m_notifiers;
    std::vector<std::unique_ptr<LoggingEditor>> m_editors; ///< They die first.
    std::vector<std::vector<int>> m_registered;            ///< Of each notifier, in order.
};

} // namespace

TEST(ListDifference, EditorsAnswerAsAVectorDoes)
{
    for (unsigned seed = 1; seed <= 2; ++seed) {
        SCOPED_TRACE(seed);
        EditorModel model(seed);
        for (int step = 0; step < stepCount(6000) && !HasFatalFailure(); ++step)
            model.step(step % 1200 < 700 ? 300 : 20);
    }
}

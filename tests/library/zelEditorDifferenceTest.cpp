// Editors of many notifiers, and notifiers with many editors, against plain vectors, as
// zelListDifferenceTest.cpp does for ports and nodes.

#include "zelListModel.h"

#include <functional>
#include <memory>

using namespace ZEL;

namespace {

/// One change of who hears of whom. Editors and notifiers are named by their number.
struct Registering {
    enum Kind { Add, Remove, EndEditor, EndNotifier };
    Kind kind;
    int editor;
    int notifier;
};

/// Says its number when it hears something; it may be dead then.
class SayingEditor final : public HostEditor {
public:
    SayingEditor(int number, const std::function<void(int)>& hear) : m_number(number), m_hear(hear)
    {
    }
    void zel_onNodeChange(ENodeChangeType /*type*/,
                          const AddRefWrapper<Compound>& /*compound*/,
                          const AddRefWrapper<Node>& /*node*/) override
    {
        m_hear(m_number);
    }

private:
    int m_number;
    const std::function<void(int)>& m_hear;
};

class EditorModel {
public:
    EditorModel(int editors, int notifiers)
        : m_editors(static_cast<std::size_t>(editors)),
          m_notifiers(static_cast<std::size_t>(notifiers)),
          m_registered(static_cast<std::size_t>(notifiers))
    {
        for (int i = 0; i < editors; ++i)
            editor(i) = std::make_unique<SayingEditor>(i, m_hear);
        for (auto& notifier : m_notifiers)
            notifier = std::make_unique<HostEditorNotifier>();
    }

    int editorCount() const { return static_cast<int>(m_editors.size()); }
    int notifierCount() const { return static_cast<int>(m_notifiers.size()); }
    /// The editors of a notifier in their order.
    std::vector<int>& registered(int notifier)
    {
        return m_registered[static_cast<std::size_t>(notifier)];
    }

    void make(const Registering& change)
    {
        makeInModel(change);
        makeInReality(change);
    }
    /// Compares who hears of the notifier. While the editor at each of those turns is called the
    /// change is made.
    void notify(int notifier, const std::vector<std::pair<int, Registering>>& during = {})
    {
        m_log.clear();
        m_hear = [this, &during](int number) {
            m_log.push_back(number);
            const std::size_t turn = m_log.size();
            for (const auto& [place, change] : during) {
                if (static_cast<std::size_t>(place) == turn)
                    makeInReality(change);
            }
        };
        m_notifiers[static_cast<std::size_t>(notifier)]->notifyNodeChange(eNodeChanged, nullptr,
                                                                          nullptr);
        ASSERT_EQ(walk(notifier, during), m_log);
    }
    void notifyAll()
    {
        for (int i = 0; i < notifierCount(); ++i)
            notify(i);
    }
    /// Makes an editor of the notifier, or else any, and says which.
    int pickEditor(Random& random, int notifier)
    {
        auto& numbers = registered(notifier);
        return numbers.empty() || random.oneIn(3) ? random.below(editorCount())
                                                  : random.from(numbers);
    }

private:
    std::unique_ptr<SayingEditor>& editor(int number)
    {
        return m_editors[static_cast<std::size_t>(number)];
    }

    void makeInReality(const Registering& change)
    {
        auto& notifier = m_notifiers[static_cast<std::size_t>(change.notifier)];
        switch (change.kind) {
        case Registering::Add:
            return notifier->registerEditor(editor(change.editor).get());
        case Registering::Remove:
            return notifier->unregisterEditor(editor(change.editor).get());
        case Registering::EndEditor: // Another one is in its place, which knows nobody.
            editor(change.editor) = std::make_unique<SayingEditor>(change.editor, m_hear);
            return;
        default:
            notifier = std::make_unique<HostEditorNotifier>();
        }
    }

    void makeInModel(const Registering& change)
    {
        auto& numbers = registered(change.notifier);
        switch (change.kind) {
        case Registering::Add:
            if (std::count(numbers.begin(), numbers.end(), change.editor) == 0)
                numbers.push_back(change.editor);
            return;
        case Registering::Remove:
            return forget(numbers, change.editor);
        case Registering::EndEditor:
            for (auto& each : m_registered)
                forget(each, change.editor);
            return;
        default:
            numbers.clear();
        }
    }
    static void forget(std::vector<int>& numbers, int editor)
    {
        numbers.erase(std::remove(numbers.begin(), numbers.end(), editor), numbers.end());
    }

    /// Who hears of it: the list is read again after each callback, and a notifier that dies ends
    /// the pass.
    std::vector<int> walk(int notifier, const std::vector<std::pair<int, Registering>>& during)
    {
        std::vector<int> heard;
        bool isAlive = true;
        for (std::size_t i = 0; isAlive && i < registered(notifier).size(); ++i) {
            heard.push_back(registered(notifier)[i]);
            for (const auto& [turn, change] : during) {
                if (static_cast<std::size_t>(turn) != heard.size())
                    continue;
                makeInModel(change);
                if (change.kind == Registering::EndNotifier && change.notifier == notifier)
                    isAlive = false;
            }
        }
        return heard;
    }

    std::function<void(int)> m_hear;
    std::vector<int> m_log;
    std::vector<std::unique_ptr<SayingEditor>> m_editors;
    std::vector<std::unique_ptr<HostEditorNotifier>> m_notifiers; ///< They die first.
    std::vector<std::vector<int>> m_registered;                   ///< Of each notifier, in order.
};

Registering pickChange(Random& random, EditorModel& model, int editor, int notifier)
{
    if (random.oneIn(4))
        notifier = random.below(model.notifierCount());
    const Registering::Kind kinds[] = {Registering::Add, Registering::Remove,
                                       Registering::EndEditor, Registering::EndNotifier};
    return {random.from(kinds), random.oneIn(3) ? model.pickEditor(random, notifier) : editor,
            notifier};
}

/// The numbers from 0 on in the order in which they are taken: 0 first to last, 1 last to first,
/// 2 shuffled, 3 from both ends, 4 every second and then the rest, 5 in strides.
std::vector<int> orderOf(int kind, int count, Random& random)
{
    std::vector<int> numbers;
    numbers.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        numbers.push_back(kind == 1 ? count - 1 - i : i);
    std::vector<int> result;
    for (std::size_t step = 0, place = 0; !numbers.empty(); ++step) {
        if (kind == 2)
            place = static_cast<std::size_t>(random.below(static_cast<int>(numbers.size())));
        else if (kind == 3)
            place = step % 2 == 0 ? 0 : numbers.size() - 1;
        else if (kind == 4)
            place = place + 1 < numbers.size() && step > 0 ? place + 1 : 0;
        else
            place = kind == 5 ? step * 7 % numbers.size() : 0;
        result.push_back(numbers[place]);
        numbers.erase(numbers.begin() + static_cast<std::ptrdiff_t>(place));
    }
    return result;
}

} // namespace

TEST(ListDifference, EditorsAnswerAsAVectorDoes)
{
    const struct {
        int editors, notifiers, longest; ///< The longest list of a notifier.
    } cases[] = {{500, 3, 300}, {4, 400, 4}, {60, 60, 50}, {3, 3, 3}};
    for (const auto& row : cases) {
        for (unsigned seed = 1; seed <= 2; ++seed) {
            SCOPED_TRACE(testing::PrintToString(std::make_tuple(row.editors, row.notifiers, seed)));
            Random random(seed);
            EditorModel model(row.editors, row.notifiers);
            for (int step = 0; step < stepCount(6000) && !HasFatalFailure(); ++step) {
                const int notifier = random.below(row.notifiers);
                const int goal = step % 1500 < 900 ? row.longest : row.longest / 16;
                const bool grows = static_cast<int>(model.registered(notifier).size()) < goal;
                const int editor =
                    grows ? random.below(row.editors) : model.pickEditor(random, notifier);
                if (random.oneIn(60))
                    model.make(pickChange(random, model, editor, notifier));
                else
                    model.make({grows ? Registering::Add : Registering::Remove, editor, notifier});
                std::vector<std::pair<int, Registering>> during;
                for (int i = random.oneIn(4) ? 1 + random.below(2) : 0; i > 0; --i)
                    during.emplace_back(
                        1 + random.below(static_cast<int>(model.registered(notifier).size()) + 1),
                        pickChange(random, model, editor, notifier));
                model.notify(random.oneIn(3) ? random.below(row.notifiers) : notifier, during);
            }
            model.notifyAll();
        }
    }
}

TEST(ListDifference, NotifiersOfOneEditorEndInEveryOrder)
{
    Random random(3);
    for (const int count : {2, 32, 33, 100, 1000}) {
        for (int order = 0; order < 6; ++order) {
            for (const bool isEnd : {true, false}) { // They die, or only let the editors go.
                SCOPED_TRACE(testing::PrintToString(std::make_tuple(count, order, isEnd)));
                EditorModel model(3, count);
                for (int i = 0; i < count; ++i) { // One editor meets them the other way round.
                    model.make({Registering::Add, 0, i});
                    model.make({Registering::Add, 1, count - 1 - i});
                }
                int left = count;
                for (const int notifier : orderOf(order, count, random)) {
                    if (isEnd)
                        model.make({Registering::EndNotifier, 0, notifier});
                    else
                        model.make({Registering::Remove, notifier % 2, notifier});
                    if (random.oneIn(9)) // Comes last in the list of each.
                        model.make({Registering::Add, random.below(3), random.below(count)});
                    model.notify(random.below(count));
                    if (--left == count / 3)
                        model.make({Registering::EndEditor, 1, 0});
                    if (HasFatalFailure())
                        return;
                }
                model.notifyAll();
                model.make({Registering::EndEditor, 0, 0});
                model.notifyAll();
            }
        }
    }
}

TEST(ListDifference, NotifiersOfAFewEditorsComeAndGo)
{
    // More are made in their life than the editors' lists have room for: what is left moves up.
    for (const int editors : {1, 2, 17, 40}) {
        for (const bool isFirstInFirstOut : {true, false}) {
            SCOPED_TRACE(testing::PrintToString(std::make_tuple(editors, isFirstInFirstOut)));
            Random random(static_cast<unsigned>(editors));
            constexpr int kAtATime = 30;
            EditorModel model(editors, kAtATime);
            for (int step = 0; step < stepCount(1500) && !HasFatalFailure(); ++step) {
                const int notifier = isFirstInFirstOut ? step % kAtATime : random.below(kAtATime);
                model.make({Registering::EndNotifier, 0, notifier});
                for (int i = 0; i < editors; ++i)
                    model.make({Registering::Add, (step + i) % editors, notifier});
                if (random.oneIn(3)) // The others of that notifier keep their places.
                    model.make({Registering::Remove, random.below(editors), notifier});
                if (random.oneIn(300))
                    model.make({Registering::EndEditor, random.below(editors), 0});
                model.notify(random.below(kAtATime));
            }
            model.notifyAll();
            for (int i = 0; i < editors; ++i)
                model.make({Registering::EndEditor, i, 0});
            model.notifyAll();
        }
    }
}

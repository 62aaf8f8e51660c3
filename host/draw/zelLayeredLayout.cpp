#include "draw/zelLayeredLayout.h"

#include "draw/zelQuickLayout.h"

#include <algorithm>
#include <cmath>
#include <gvc.h>
#include <memory>
#include <mutex>

// The name that the engine's library gives it.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" gvplugin_library_t gvplugin_dot_layout_LTX_library;

namespace zelDraw {

namespace {

constexpr int kLongestCell = 30000; ///< The engine counts the points of a cell with 16 bits.
constexpr int kHighestBox = 65000;  ///< And the distance of two neighbours in a layer likewise.
// The engine takes long for large graphs, and seconds for much more than this.
constexpr std::size_t kMostBoxes = 300;
constexpr std::size_t kMostEdges = 900;
constexpr int kMargin = 6; ///< How far curves stay above and below a box.

std::string& engineWords()
{
    static std::string words;
    return words;
}

int keepWords(char* text)
{
    for (const char* c = text; *c != '\0'; ++c)
        engineWords() += *c == '\n' ? ' ' : *c;
    return 0;
}

/// The engine takes names as texts that it could change, and does not.
char* asText(const std::string& text)
{
    return const_cast<char*>(text.c_str());
}

std::string cell(const std::string& attributes, int width, int height)
{
    return "<TR><TD " + attributes + " FIXEDSIZE=\"TRUE\" WIDTH=\"" + std::to_string(width) +
           "\" HEIGHT=\"" + std::to_string(height) + "\"></TD></TR>";
}

std::string space(int width, int height)
{
    std::string rows;
    for (; height > 0; height -= kLongestCell)
        rows += cell("", width, std::min(height, kLongestCell));
    return rows;
}

const char* const kTable = "<TABLE BORDER=\"0\" CELLBORDER=\"0\" CELLSPACING=\"0\" "
                           "CELLPADDING=\"0\">";

/// One side of a box: a column of cells, those of ports two points high around the port's height.
std::string side(const std::string& name, const std::vector<int>& ports, int height)
{
    std::string rows;
    int top = -kMargin;
    for (std::size_t i = 0; i < ports.size(); ++i) {
        rows += space(2, ports[i] - 1 - top);
        rows += cell("PORT=\"" + name + std::to_string(i) + "\"", 2, 2);
        top = ports[i] + 1;
    }
    return std::string("<TD>") + kTable + rows + space(2, height + kMargin - top) + "</TABLE></TD>";
}

/// The box as a table of three columns, whose outer cells are where edges can end.
std::string tableOf(const LayoutBox& box)
{
    std::string middle;
    for (int rest = box.width - 4; rest > 0; rest -= kLongestCell)
        middle += "<TD FIXEDSIZE=\"TRUE\" WIDTH=\"" + std::to_string(std::min(rest, kLongestCell)) +
                  "\" HEIGHT=\"2\"></TD>";
    return std::string(kTable) + "<TR>" + side("in", box.leftPorts, box.height) + middle +
           side("out", box.rightPorts, box.height) + "</TR></TABLE>";
}

/// What is covered, from the upper left to the lower right.
struct Extent {
    Point low = {1e9, 1e9};
    Point high = {-1e9, -1e9};

    void add(const Point& point)
    {
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
    }

    /// Steps along the curve: its control points may lie far outside it.
    void add(const Curve& curve)
    {
        constexpr int kSteps = 16;
        for (std::size_t i = 0; i + 3 < curve.size(); i += 3) {
            for (int step = 0; step <= kSteps; ++step)
                add(pointOf(&curve[i], static_cast<double>(step) / kSteps));
        }
    }

    static Point pointOf(const Point* control, double t)
    {
        const double s = 1 - t;
        const double weights[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        Point point;
        for (int i = 0; i < 4; ++i)
            point = point + Point{weights[i] * control[i].x, weights[i] * control[i].y};
        return point;
    }
};

/// One graph in the engine's form; goes with all that the engine has hung on it.
class EngineGraph {
public:
    EngineGraph(GVC_t* context, LayoutGraph& graph)
        : m_context(context),
          m_graph(graph),
          m_made(agopen(asText("picture"), Agdirected, nullptr))
    {
        const struct {
            int kind;
            const char* name;
            const char* value;
        } attributes[] = {
            {AGRAPH, "rankdir", "LR"},  {AGRAPH, "ranksep", "0.6"}, {AGRAPH, "nodesep", "0.15"},
            {AGNODE, "shape", "plain"}, {AGNODE, "label", ""},      {AGEDGE, "dir", "none"},
            {AGEDGE, "tailport", ""},   {AGEDGE, "headport", ""},   {AGEDGE, "style", ""},
            {AGEDGE, "weight", "1"},
        };
        for (const auto& attribute : attributes)
            agattr(m_made, attribute.kind, asText(attribute.name), asText(attribute.value));
        for (const LayoutBox& box : graph.boxes)
            addBox(box);
        for (const LayoutEdge& edge : graph.edges)
            addEdge(edge);
        addBounds();
    }
    EngineGraph(const EngineGraph&) = delete;
    EngineGraph& operator=(const EngineGraph&) = delete;
    ~EngineGraph()
    {
        if (m_hasLayout)
            gvFreeLayout(m_context, m_made);
        agclose(m_made);
    }

    bool run()
    {
        m_hasLayout = gvLayout(m_context, m_made, "dot") == 0;
        return m_hasLayout;
    }

    /// Writes the places into the graph.
    void read()
    {
        for (std::size_t i = 0; i < m_nodes.size(); ++i) {
            LayoutBox& box = m_graph.boxes[i];
            const Point middle = placeOf(ND_coord(m_nodes[i]));
            box.place = {std::round(middle.x - box.width / 2.0),
                         std::round(middle.y - box.height / 2.0)};
        }
        for (std::size_t i = 0; i < m_edges.size(); ++i)
            readEdge(m_graph.edges[i], m_edges[i]);
        trim();
    }

private:
    void addBox(const LayoutBox& box)
    {
        Agnode_t* const node = agnode(m_made, asText("b" + std::to_string(m_nodes.size())), 1);
        char* const label = agstrdup_html(m_made, asText(tableOf(box)));
        agset(node, asText("label"), label);
        agstrfree(m_made, label);
        m_nodes.push_back(node);
    }

    void addEdge(const LayoutEdge& edge)
    {
        Agedge_t* const made = agedge(m_made, m_nodes[edge.source], m_nodes[edge.target],
                                      asText("e" + std::to_string(m_edges.size())), 1);
        agset(made, asText("tailport"), asText("out" + std::to_string(edge.sourcePort) + ":e"));
        agset(made, asText("headport"), asText("in" + std::to_string(edge.targetPort) + ":w"));
        m_edges.push_back(made);
    }

    /// By edges that nobody sees: the engine's own ranks "source" and "sink" leak.
    void addBounds()
    {
        for (const auto& [source, target] : layerBounds(m_graph)) {
            Agedge_t* const made = agedge(m_made, m_nodes[source], m_nodes[target], nullptr, 1);
            agset(made, asText("style"), asText("invis"));
            agset(made, asText("weight"), asText("0"));
        }
    }

    /// The engine counts upward from the bottom.
    Point placeOf(const pointf& point) const
    {
        return {point.x - GD_bb(m_made).LL.x, GD_bb(m_made).UR.y - point.y};
    }

    void readEdge(LayoutEdge& edge, Agedge_t* made) const
    {
        const LayoutBox& source = m_graph.boxes[edge.source];
        const LayoutBox& target = m_graph.boxes[edge.target];
        const Point start = {source.place.x + source.width,
                             source.place.y + source.rightPorts[edge.sourcePort]};
        const Point end = {target.place.x, target.place.y + target.leftPorts[edge.targetPort]};
        const splines* const found = ED_spl(made);
        if (found && found->size > 0) {
            const bezier& list = found->list[0];
            for (int i = 0; i < list.size; ++i)
                edge.curve.push_back(placeOf(list.list[i]));
        }
        if (edge.curve.size() < 4) {
            const double reach = std::max(40.0, std::abs(end.x - start.x) / 2);
            edge.curve = {start, {start.x + reach, start.y}, {end.x - reach, end.y}, end};
        }
        edge.curve.front() = start;
        edge.curve.back() = end;
    }

    /// Takes off the room that the engine has kept for edges that nobody sees.
    void trim()
    {
        Extent extent;
        for (const LayoutBox& box : m_graph.boxes) {
            extent.add(box.place);
            extent.add(box.place + Point{double(box.width), double(box.height)});
        }
        for (const LayoutEdge& edge : m_graph.edges)
            extent.add(edge.curve);
        // Whole steps: ports keep whole heights.
        const Point shift = {-std::floor(extent.low.x), -std::floor(extent.low.y)};
        for (LayoutBox& box : m_graph.boxes)
            box.place = box.place + shift;
        for (LayoutEdge& edge : m_graph.edges) {
            for (Point& point : edge.curve)
                point = point + shift;
        }
        m_graph.width = extent.high.x + shift.x;
        m_graph.height = extent.high.y + shift.y;
    }

    GVC_t* m_context;
    LayoutGraph& m_graph;
    Agraph_t* m_made;
    bool m_hasLayout = false;
    std::vector<Agnode_t*> m_nodes; ///< As the boxes.
    std::vector<Agedge_t*> m_edges; ///< As the edges.
};

} // namespace

bool layOut(LayoutGraph& graph, std::string& problem)
{
    if (graph.boxes.empty())
        return true;
    const bool isHigh = std::any_of(graph.boxes.begin(), graph.boxes.end(),
                                    [](const LayoutBox& box) { return box.height > kHighestBox; });
    if (isHigh || graph.boxes.size() > kMostBoxes || graph.edges.size() > kMostEdges) {
        layOutQuickly(graph);
        return true;
    }
    // The engine's errors go to one place, whoever it works for.
    static std::mutex engineMutex;
    const std::lock_guard<std::mutex> lock(engineMutex);
    // The engine is linked: nothing is looked for on the machine, and no font is loaded.
    const lt_symlist_t builtins[] = {
        {"gvplugin_dot_layout_LTX_library", &gvplugin_dot_layout_LTX_library},
        {nullptr, nullptr},
    };
    const std::unique_ptr<GVC_t, int (*)(GVC_t*)> context(gvContextPlugins(builtins, 0),
                                                          gvFreeContext);
    engineWords().clear();
    const agusererrf former = agseterrf(keepWords);
    EngineGraph made(context.get(), graph);
    const bool isPlaced = made.run();
    if (isPlaced)
        made.read();
    else
        problem = "cannot be laid out: " + engineWords();
    agseterrf(former);
    return isPlaced;
}

} // namespace zelDraw

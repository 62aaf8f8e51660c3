#include "draw/zelQuickLayout.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using zelDraw::LayoutBox;
using zelDraw::LayoutEdge;
using zelDraw::LayoutGraph;

LayoutBox boxOf(int height, LayoutBox::Layer layer = LayoutBox::Layer::Any)
{
    LayoutBox box;
    box.width = 100;
    box.height = height;
    box.leftPorts = {10, 20};
    box.rightPorts = {15};
    box.layer = layer;
    return box;
}

LayoutEdge edgeOf(std::size_t source, std::size_t target, std::size_t port = 0)
{
    LayoutEdge edge;
    edge.source = source;
    edge.target = target;
    edge.targetPort = port;
    return edge;
}

/// What is wrong with the places, one a line.
std::string faultsOf(const LayoutGraph& graph)
{
    std::string faults;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const LayoutBox& a = graph.boxes[i];
        if (a.place.x < 0 || a.place.y < 0 || a.place.x + a.width > graph.width ||
            a.place.y + a.height > graph.height)
            faults += std::to_string(i) + " is outside\n";
        if (a.place.y != std::floor(a.place.y))
            faults += std::to_string(i) + " is between pixels\n";
        for (std::size_t k = i + 1; k < graph.boxes.size(); ++k) {
            const LayoutBox& b = graph.boxes[k];
            if (a.place.x < b.place.x + b.width && b.place.x < a.place.x + a.width &&
                a.place.y < b.place.y + b.height && b.place.y < a.place.y + a.height)
                faults += std::to_string(i) + " overlaps " + std::to_string(k) + "\n";
        }
    }
    for (const LayoutEdge& edge : graph.edges) {
        const LayoutBox& target = graph.boxes[edge.target];
        if (edge.curve.size() != 4 || edge.curve.back().x != target.place.x ||
            edge.curve.back().y != target.place.y + target.leftPorts[edge.targetPort])
            faults += "an edge ends off its port\n";
    }
    return faults;
}

/// Edges that do not lead to the right.
int backwardEdges(const LayoutGraph& graph)
{
    int count = 0;
    for (const LayoutEdge& edge : graph.edges)
        count += graph.boxes[edge.source].place.x + 100 >= graph.boxes[edge.target].place.x;
    return count;
}

} // namespace

TEST(QuickLayout, LeadsEveryEdgeOfAGraphWithoutCyclesToTheRight)
{
    std::mt19937 random(7); // NOLINT(bugprone-random-generator-seed): the same graph each time.
    for (const std::size_t size : {1U, 2U, 60U, 700U}) {
        LayoutGraph graph;
        for (std::size_t i = 0; i < size; ++i)
            graph.boxes.push_back(boxOf(30 + static_cast<int>(random() % 200)));
        for (std::size_t i = 1; i < size; ++i) {
            for (std::size_t port = 0; port < random() % 3; ++port)
                graph.edges.push_back(edgeOf(random() % i, i, port));
        }
        zelDraw::layOutQuickly(graph);
        EXPECT_EQ("", faultsOf(graph)) << size;
        EXPECT_EQ(0, backwardEdges(graph)) << size;
        LayoutGraph again = graph;
        zelDraw::layOutQuickly(again);
        for (std::size_t i = 0; i < size; ++i)
            EXPECT_EQ(graph.boxes[i].place.y, again.boxes[i].place.y);
    }
}

TEST(QuickLayout, PlacesCyclesLoopsAndTheEndsOfAFrame)
{
    LayoutGraph graph;
    graph.boxes = {boxOf(50, LayoutBox::Layer::First), boxOf(60), boxOf(60), boxOf(60),
                   boxOf(50, LayoutBox::Layer::Last),  boxOf(70)};
    for (const auto& [source, target] :
         {std::pair(0, 1), std::pair(1, 2), std::pair(2, 3), std::pair(3, 1), std::pair(3, 3),
          std::pair(3, 4), std::pair(0, 4)})
        graph.edges.push_back(
            edgeOf(static_cast<std::size_t>(source), static_cast<std::size_t>(target)));
    zelDraw::layOutQuickly(graph);
    EXPECT_EQ("", faultsOf(graph));
    EXPECT_EQ(2, backwardEdges(graph)); // The loop, and the edge that closes the cycle.
    EXPECT_EQ(0, graph.boxes[0].place.x);
    for (const std::size_t i : {1U, 2U, 3U, 5U})
        EXPECT_LT(graph.boxes[i].place.x + 100, graph.boxes[4].place.x);
}

TEST(QuickLayout, AlignsAChainAndPutsWhatIsAloneIntoAGrid)
{
    LayoutGraph chain;
    for (std::size_t i = 0; i < 50000; ++i) {
        chain.boxes.push_back(boxOf(40));
        if (i > 0)
            chain.edges.push_back(edgeOf(i - 1, i));
    }
    zelDraw::layOutQuickly(chain);
    for (const LayoutEdge& edge : chain.edges)
        EXPECT_NEAR(edge.curve.front().y, edge.curve.back().y, 1);

    LayoutGraph grid;
    grid.boxes.assign(400, boxOf(40));
    zelDraw::layOutQuickly(grid);
    EXPECT_EQ("", faultsOf(grid));
    EXPECT_LT(grid.height, grid.width);
    EXPECT_GT(4 * grid.height, grid.width);
}

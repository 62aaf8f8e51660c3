#pragma once

#include "window/gestures/desk.h"

#include <QPointer>
#include <Qt>
#include <memory>

namespace shading {

class Backdrop;
class Edits;
class NameEditor;

/// What is done with what is selected on a canvas, by keys and menus. Each is one edit at most.
class CanvasCommands {
public:
    /// The desk is not owned and must outlive this.
    explicit CanvasCommands(Desk& desk) : m_desk(desk) {}

    // Selected besides nodes: either wires, an inner port or a backdrop.
    void selectWire(const PortPtr& source, const PortPtr& target, Qt::KeyboardModifiers modifiers);
    void selectPort(const PortPtr& port);
    void selectBackdrop(const std::shared_ptr<Backdrop>& backdrop);
    /// None of these.
    void selectNoWires();
    bool hasWires() const;
    /// Empty: none is.
    PortPtr selectedPort() const;
    /// Null: none is.
    std::shared_ptr<Backdrop> selectedBackdrop() const;
    /// That port, or all of the selected nodes.
    std::vector<PortPtr> ports() const;
    bool hasSelection() const;

    // Nodes.
    /// Where the mouse is.
    void add();
    /// Into a new graph, whose name is asked for.
    void group();
    bool canUngroup() const;
    void ungroup();
    /// Wires, an inner port, or nodes; those are healed or not.
    void remove(bool isHealed);
    /// To the next of the three states of the first one.
    void fold();
    bool canEnter() const;
    void enter();
    bool canRename() const;
    void rename();

    /// Makes a backdrop around the selected nodes.
    void wrap();

    // Connections.
    void connect();
    void disconnect();
    void reroute();
    /// The selected node into a connection.
    void insert();
    /// From the selected wire to one of its ends.
    void goToEnd(bool isSource);

    /// The view or the scene changed under the name that is being edited.
    void follow();

private:
    void editName(const QString& name,
                  const std::function<QRectF()>& place,
                  const std::function<bool(Edits& edits, const std::string& name)>& rename);
    void renameNode(const NodePtr& node);
    void renamePort(const PortPtr& port);
    void renameBackdrop(const std::shared_ptr<Backdrop>& backdrop);

    Desk& m_desk;
    QPointer<NameEditor> m_editor; ///< Null: no name is being edited.
};

} // namespace shading

import QtQuick

// The texts of one role of a model's rows, as its views see them.
Item {
    id: root

    required property var model
    required property string role

    function joined() {
        let texts = [];
        for (let i = 0; i < rows.count; ++i)
            texts.push(rows.itemAt(i).text);
        return texts.join(" ");
    }

    Repeater {
        id: rows
        model: root.model
        delegate: Item {
            required property var model
            readonly property string text: String(model[root.role])
        }
    }
}

// SPDX-License-Identifier: MIT
// Reads any bytes as XML. What is saved must be read again, and be saved the same.
#include <core/MVRDomDoc.h>
#include <fuzz/Require.h>
#include <fuzz/Targets.h>

#include <QBuffer>

namespace {

QByteArray saved(const MVRDomDoc &tree)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    require(tree.save(buffer), "a tree is saved");
    return buffer.data();
}

bool read(MVRDomDoc *tree, const QByteArray &xml)
{
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    return tree->setContent(&buffer);
}

}

void fuzz_xml_tree(const QByteArray &input)
{
    MVRDomDoc tree;
    if (!read(&tree, input)) {
        require(!tree.errorString().isEmpty(), "a fault has a message");
        require(tree.currentElement().isNull(), "a fault leaves no tree");
        return;
    }
    MVRDomDoc fromText;
    fromText.setContent(QString::fromUtf8(input));
    const QByteArray first = saved(tree);
    MVRDomDoc again;
    require(read(&again, first), "what was saved is read");
    require(saved(again) == first, "what was read is saved the same");
    tree.cd(tree.currentElement().firstChildElement().tagName());
    tree.cdUp(2);
}

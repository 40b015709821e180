#pragma once

#include "propertylist/block.h"

namespace plenzo {

class Value;

/// The collections whose last reference is gone and that are still to be taken apart. They are
/// linked through their own heads, so that neither stack nor memory grows with the nesting.
class DeadCollections {
public:
    void add(CollectionBlock* block);
    void destroyAll();

private:
    void destroyElements(CollectionBlock* block);
    /// Ends a value without its destructor, which would recurse.
    void discard(Value& value);

    void* m_first = nullptr;
};

} // namespace plenzo

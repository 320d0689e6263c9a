#pragma once

/// Marks a class of which a process has one object, reached through the class's own accessor. The
/// accessor creates the object on first use, once however many threads ask, and never destroys it.
///
/// The object's pointer lives in the class's source file: one in this header would exist once in
/// every binary that includes it.
template <typename T>
class CSingleton
{
public:
    virtual ~CSingleton() = default;
};

#pragma once
// Forward declarations of the context types that most logic headers take by reference.

namespace tallora {
class Dialogs;
class WorkingContext;
}  // namespace tallora

#include "model/workspace.h"

Workspace::~Workspace() = default;

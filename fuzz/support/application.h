#pragma once

/// Makes the application object that parts of Qt need, once, where the program has none yet. Qt and the host's logger
/// are silent from then on: what they would say of each input costs more than the input.
void needApplication();

// Nothing of its own: the target that has it owns the precompiled header of the unit tests.

// How many GDI and USER objects the process holds, to see that what is opened and closed leaves nothing
// behind.
#pragma once

namespace kx::test {

// Numbers to compare with each other only: the highest slot that a batch of new objects gets in the handle table, which a
// leak drives up. Wine does not keep the counts of GetGuiResources.
struct GuiObjects {
    unsigned long gdi;
    unsigned long user;
};

GuiObjects CountGuiObjects();

}  // namespace kx::test

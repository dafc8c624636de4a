#pragma once

#include "Simulator/HomeScreen/Commands.h"

namespace simulator {

// What the commands do in the home screen, under the names of the table of commands.
//
// Errors: each throws `CommandFailure` when it cannot be carried out.

void listSwitches(HomeScreen& homeScreen, const Arguments& arguments);
void listListeners(HomeScreen& homeScreen, const Arguments& arguments);
void toggle(HomeScreen& homeScreen, const Arguments& arguments);
void fireEvent(HomeScreen& homeScreen, const Arguments& arguments);
void abortEvent(HomeScreen& homeScreen, const Arguments& arguments);
void otherListenerHandledEvent(HomeScreen& homeScreen, const Arguments& arguments);
void showScreen(HomeScreen& homeScreen, const Arguments& arguments);
void press(HomeScreen& homeScreen, const Arguments& arguments);
void typeText(HomeScreen& homeScreen, const Arguments& arguments);
void gallery(HomeScreen& homeScreen, const Arguments& arguments);
void wait(HomeScreen& homeScreen, const Arguments& arguments);
void settle(HomeScreen& homeScreen, const Arguments& arguments);
void lock(HomeScreen& homeScreen, const Arguments& arguments);
void unlock(HomeScreen& homeScreen, const Arguments& arguments);
void litter(HomeScreen& homeScreen, const Arguments& arguments);
void restart(HomeScreen& homeScreen, const Arguments& arguments);

} // namespace simulator

// SPDX-License-Identifier: MIT
/* texts.h: the numbers of the user interface's texts, for the program and for its language modules. */
#ifndef HOST_TEXTS_H
#define HOST_TEXTS_H

#define TEXT_GREETING 1

#endif

// SPDX-License-Identifier: MIT
/* texts.h: the numbers of the user interface's texts, for the program and for all language modules. */
#ifndef VIEWER_TEXTS_H
#define VIEWER_TEXTS_H

#define TEXT_LANGUAGE 1
#define TEXT_GREETING 2

#endif

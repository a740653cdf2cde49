// SPDX-License-Identifier: MIT
// Precompiled for folders that show windows.
#pragma once

#include "core.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPainter>
#include <QTextEdit>
#include <QToolBar>
#include <QWidget>

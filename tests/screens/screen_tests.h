// How a file of tests joins the program of all screen tests.
#pragma once

#include <QFileInfo>
#include <QMap>
#include <QObject>
#include <functional>
#include <memory>

/// The tests by the names of their files.
inline QMap<QString, std::function<std::unique_ptr<QObject>()>>& ScreenTests() {
  static QMap<QString, std::function<std::unique_ptr<QObject>()>> tests;
  return tests;
}

/// Enters the class of this file's tests.
#define SCREEN_TEST(Test)                                        \
  static const bool kEntered = [] {                              \
    ScreenTests()[QFileInfo(__FILE__).completeBaseName()] = [] { \
      return std::make_unique<Test>();                           \
    };                                                           \
    return true;                                                 \
  }();

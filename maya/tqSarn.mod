+ MAYAVERSION:2025 PLATFORM:linux tqSarn 0.97 ./tqSarn
MAYA_SCRIPT_PATH +:= scripts

"""The system's own controls, each a class of windows written here instead of in emulated code.
Importing this package registers them all.
"""

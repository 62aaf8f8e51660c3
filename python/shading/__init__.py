"""The sample host's shading documents: open, edit, check, draw and save them."""

from zel.shading._shading import *

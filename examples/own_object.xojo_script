' Objects of your own classes. On disk only property lists can be kept, so an object goes there as a Dictionary. Within
' one run of the program the object itself can travel through a volatile domain: Cocoa carries it in a wrapper, and the
' very same object comes back.

Class Recipe
  Dim Title As String
  Dim Minutes As Integer
  Dim Ingredients() As String

  Sub Constructor(name As String, time As Integer)
    Title = name
    Minutes = time
  End Sub

  Function ToDictionary() As Dictionary
    Dim dic As New Dictionary
    dic.Value("title") = Title
    dic.Value("minutes") = Minutes
    dic.Value("ingredients") = Ingredients
    Return dic
  End Function

  Function Text() As String
    Return Title + ", " + Str(Minutes) + " minutes: " + Join(Ingredients, ", ")
  End Function
End Class

Function RecipeOf(dic As Dictionary) As Recipe
  Dim made As New Recipe(dic.Value("title"), dic.Value("minutes"))
  Dim parts() As Variant = dic.Value("ingredients")
  For Each part As Variant In parts
    made.Ingredients.Append(part)
  Next
  Return made
End Function

Dim d As NSUserDefaultsKTZ = NSUserDefaultsKTZ.standardUserDefaults
Dim soup As New Recipe("Onion soup", 45)
soup.Ingredients.Append("onions")
soup.Ingredients.Append("broth")

' Kept on disk: by value.
d.dictionaryForKey("Favourite") = soup.ToDictionary
Call d.synchronize
Dim again As Recipe = RecipeOf(d.dictionaryForKey("Favourite"))
Print "From disk:    " + again.Text
Assert(Not (again Is soup), "it is another object with the same contents")

' Kept while the program runs: the object itself.
Dim session As New Dictionary
session.Value("Open") = soup
d.setVolatileDomain(session, "Session")
Dim open As Recipe = Recipe(d.volatileDomainForName("Session").Value("Open"))
open.Minutes = 50
Print "From session: " + soup.Text
Assert(open Is soup)
d.removeVolatileDomainForName("Session")

' Cocoa refuses the object itself where it would go to disk: later systems raise an exception, early ones only write a
' line to the log. What was there stays.
Try
  d.variantForKey("Favourite") = soup
Catch e As NSExceptionKTZ
End Try
Print "Still there:  " + RecipeOf(d.dictionaryForKey("Favourite")).Text
